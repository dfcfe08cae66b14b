package main

import (
	"encoding/json"
	"fmt"
)

// The number of every material: there is no PLM system behind this client that would make others.
const materialNumber = "M-4711"

// An object is one of JSON.
type object = map[string]any

// commands are the commands that the client knows. A real client asks its PLM system, and shows a panel to the person.
type commands struct {
	user string
	file string // empty if the person chooses none
}

// answer returns the answer text to a command. The empty text says that the person closed the panel; so do commands
// that this client does not know.
func (c commands) answer(command, request string) (string, error) {
	known := map[string]func(string) (object, error){
		"QD_PLMLogin":            c.logIn,
		"QD_PLMLogout":           c.logOut,
		"QD_PLMDataSelector":     c.selectFile,
		"QD_PLMCreateMaterial":   c.createMaterial,
		"QD_PLMMaterialBackFill": c.fillFromMaterial,
	}
	run := known[command]
	if run == nil {
		return "", nil
	}
	answer, err := run(request)
	if answer == nil || err != nil {
		return "", err
	}
	return string(toJson(answer)), nil
}

// parse reads a request text. The add-in sends the empty text if it has nothing to say.
func parse(request string, into any) error {
	if request == "" {
		return nil
	}
	return json.Unmarshal([]byte(request), into)
}

func (c commands) logIn(string) (object, error) {
	return object{"__InvokeResult__": true, "user": c.user}, nil
}

func (c commands) logOut(string) (object, error) { return object{"__InvokeResult__": true}, nil }

func (c commands) selectFile(request string) (object, error) {
	var login struct{ User string } // what QD_PLMLogin answered, here or in an earlier process
	if err := parse(request, &login); err != nil {
		return nil, err
	}
	if login.User != c.user {
		return nil, fmt.Errorf("%s is not logged in here, but %s", login.User, c.user)
	}
	if c.file == "" {
		return nil, nil
	}
	return object{"OpenFile": []string{c.file}}, nil
}

func (c commands) createMaterial(request string) (object, error) {
	var asked struct {
		Properties map[string]string `json:"extract_info"`
	}
	if err := parse(request, &asked); err != nil {
		return nil, err
	}
	return object{"data": object{"description": asked.Properties["Description"], "number": materialNumber}}, nil
}

func (c commands) fillFromMaterial(request string) (object, error) {
	var asked struct {
		Created struct{ Number string } `json:"backfill_info_from_create_material"`
	}
	if err := parse(request, &asked); err != nil {
		return nil, err
	}
	number := asked.Created.Number
	if number == "" {
		number = materialNumber // without a material just created: the person chooses
	}
	return object{"material_property_back_fill": object{"Number": number}}, nil
}
