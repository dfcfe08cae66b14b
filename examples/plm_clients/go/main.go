// A PLM client for the TAVO SolidWorks Integration, with nothing but Go's standard library. Only the user may open its
// pipe.
package main

import (
	"bufio"
	"errors"
	"flag"
	"fmt"
	"io"
	"os"
	"path/filepath"
)

const help = `usage: plm_client [--file PATH] [--user NAME] [--pipe NAME]

A PLM client for the TAVO SolidWorks Integration. It ends at Ctrl-C.

  --file PATH   the file that the data selector opens; without it, as if the person had closed the panel
  --user NAME   the name that a login answers with; default: kim
  --pipe NAME   the pipe's name, without \\.\pipe\; default: tavo-plm-client-<SID of the user>
`

const exitFailure = 2

type options struct{ file, user, pipe string }

// parseOptions reads the command line. The error names the word that a person has to correct.
func parseOptions(words []string) (options, error) {
	var chosen options
	flags := flag.NewFlagSet("plm_client", flag.ContinueOnError)
	flags.SetOutput(io.Discard) // main writes the error
	flags.StringVar(&chosen.file, "file", "", "")
	flags.StringVar(&chosen.user, "user", "kim", "")
	flags.StringVar(&chosen.pipe, "pipe", "", "")
	if err := flags.Parse(words); err != nil {
		return chosen, err
	}
	if flags.NArg() > 0 {
		return chosen, fmt.Errorf("no such option: %s; see --help", flags.Arg(0))
	}
	if chosen.file == "" {
		return chosen, nil
	}
	full, err := filepath.Abs(chosen.file)
	if err != nil {
		return chosen, fmt.Errorf("--file: %w", err)
	}
	if _, err := os.Stat(full); err != nil {
		return chosen, fmt.Errorf("--file: there is no %s", full)
	}
	chosen.file = full
	return chosen, nil
}

// serve answers the requests of one CAD application until it closes the connection.
func serve(connection io.ReadWriteCloser, commands commands) {
	defer connection.Close()
	reader := bufio.NewReader(connection)
	for {
		message, err := readMessage(reader)
		if err == nil {
			err = writeMessage(connection, answerMessage(message, commands))
		}
		if errors.Is(err, io.EOF) {
			return
		}
		if err != nil { // after a broken frame nobody knows where the next one begins
			fmt.Println("connection closed:", err)
			return
		}
	}
}

// run serves the pipe until an instance of it cannot be made.
func run(chosen options) error {
	name := chosen.pipe
	if name == "" {
		sid, err := userSid()
		if err != nil {
			return err
		}
		name = "tavo-plm-client-" + sid
	}
	pipe, err := listen(`\\.\pipe\` + name)
	if err != nil {
		return err
	}
	fmt.Println("serving", pipe.path)
	commands := commands{user: chosen.user, file: chosen.file}
	for {
		connection, err := pipe.accept()
		if err != nil {
			return err
		}
		go serve(connection, commands)
	}
}

func main() {
	chosen, err := parseOptions(os.Args[1:])
	if errors.Is(err, flag.ErrHelp) {
		fmt.Print(help)
		return
	}
	if err == nil {
		err = run(chosen)
	}
	fmt.Fprintln(os.Stderr, "plm_client:", err)
	os.Exit(exitFailure)
}
