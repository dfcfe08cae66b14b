package main

import (
	"bufio"
	"bytes"
	"encoding/json"
	"fmt"
	"io"
	"net/textproto"
	"strconv"
)

const maximumBytes = 64 * 1024 * 1024

// Codes of JSON-RPC.
const (
	invalidRequest = -32600
	unknownMethod  = -32601
	internalError  = -32603
)

type request struct {
	Id     json.RawMessage `json:"id"`
	Method string          `json:"method"`
	Params struct {
		Command string `json:"command"`
		Request string `json:"request"`
	} `json:"params"`
}

type response struct {
	Version string          `json:"jsonrpc"`
	Id      json.RawMessage `json:"id"`
	Result  *result         `json:"result,omitempty"`
	Error   *failure        `json:"error,omitempty"`
}

type result struct {
	Answer string `json:"answer"`
}

type failure struct {
	Code    int    `json:"code"`
	Message string `json:"message"`
}

// readMessage reads one frame and returns its content.
func readMessage(reader *bufio.Reader) ([]byte, error) {
	header, err := textproto.NewReader(reader).ReadMIMEHeader()
	if err != nil {
		return nil, err
	}
	length, err := strconv.ParseUint(header.Get("Content-Length"), 10, 32)
	if err != nil || length > maximumBytes {
		return nil, fmt.Errorf("a frame without a Content-Length up to %d", maximumBytes)
	}
	content := make([]byte, length)
	_, err = io.ReadFull(reader, content)
	return content, err
}

// writeMessage writes one frame.
func writeMessage(writer io.Writer, content []byte) error {
	frame := fmt.Sprintf("Content-Length: %d\r\n\r\n%s", len(content), content)
	_, err := io.WriteString(writer, frame)
	return err
}

// answerMessage returns the content of the answer to the content of a request.
func answerMessage(message []byte, commands commands) []byte {
	answer := response{Version: "2.0", Id: json.RawMessage("null")}
	var asked request
	if err := json.Unmarshal(message, &asked); err != nil {
		answer.Error = &failure{invalidRequest, err.Error()}
		return toJson(answer)
	}
	if asked.Id != nil {
		answer.Id = asked.Id
	}
	if asked.Method != "invoke" {
		answer.Error = &failure{unknownMethod, fmt.Sprintf("there is no method %q", asked.Method)}
		return toJson(answer)
	}
	fmt.Println("asked", asked.Params.Command, asked.Params.Request)
	text, err := commands.answer(asked.Params.Command, asked.Params.Request)
	if err != nil {
		answer.Error = &failure{internalError, err.Error()}
		return toJson(answer)
	}
	fmt.Println("answered", text)
	answer.Result = &result{text}
	return toJson(answer)
}

// toJson writes a value of this program, which can always be written, as JSON.
func toJson(value any) []byte {
	var text bytes.Buffer
	encoder := json.NewEncoder(&text)
	encoder.SetEscapeHTML(false)
	if err := encoder.Encode(value); err != nil {
		panic(err)
	}
	return bytes.TrimRight(text.Bytes(), "\n")
}
