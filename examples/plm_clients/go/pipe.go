package main

import (
	"errors"
	"fmt"
	"io"
	"os"
	"syscall"
	"unsafe"
)

// Values of the Windows API that the standard library does not name.
const (
	pipeAccessDuplex          = 0x00000003
	fileFlagFirstPipeInstance = 0x00080000
	pipeRejectRemoteClients   = 0x00000008
	pipeUnlimitedInstances    = 255
	sddlRevision              = 1
	errorPipeConnected        = syscall.Errno(535)
	errorNoData               = syscall.Errno(232)
	bufferBytes               = 64 * 1024
)

var (
	kernel32          = syscall.NewLazyDLL("kernel32.dll")
	createNamedPipe   = kernel32.NewProc("CreateNamedPipeW")
	connectNamedPipe  = kernel32.NewProc("ConnectNamedPipe")
	advapi32          = syscall.NewLazyDLL("advapi32.dll")
	convertDescriptor = advapi32.NewProc("ConvertStringSecurityDescriptorToSecurityDescriptorW")
)

// userSid returns the SID of the user who runs this program, such as S-1-5-21-1-2-3-1001.
func userSid() (string, error) {
	token, err := syscall.OpenCurrentProcessToken()
	if err != nil {
		return "", fmt.Errorf("the user cannot be determined: %w", err)
	}
	defer token.Close()
	user, err := token.GetTokenUser()
	if err != nil {
		return "", fmt.Errorf("the user cannot be determined: %w", err)
	}
	return user.User.Sid.String()
}

// namedPipe is a pipe that only the user may open. One of its instances always waits for a connection, so that
// no other program can take the name.
type namedPipe struct {
	path     string
	security syscall.SecurityAttributes
	waiting  syscall.Handle
}

// listen makes a pipe. It fails if there is a pipe of this name.
func listen(path string) (*namedPipe, error) {
	pipe := &namedPipe{path: path}
	if err := pipe.allowOnlyUser(); err != nil {
		return nil, err
	}
	err := pipe.makeInstance(fileFlagFirstPipeInstance)
	if errors.Is(err, syscall.ERROR_ACCESS_DENIED) {
		return nil, fmt.Errorf("%s is served already, by this or by another program", path)
	}
	return pipe, err
}

// allowOnlyUser sets the security of the instances: the user owns them (O:) and has all access to them (A;;GA),
// nobody else has any, and nothing is inherited (P). The descriptor lives as long as the program.
func (pipe *namedPipe) allowOnlyUser() error {
	sid, err := userSid()
	if err != nil {
		return err
	}
	text, err := syscall.UTF16PtrFromString("O:" + sid + "D:P(A;;FA;;;" + sid + ")")
	if err != nil {
		return err
	}
	pipe.security.Length = uint32(unsafe.Sizeof(pipe.security))
	made, _, err := convertDescriptor.Call(uintptr(unsafe.Pointer(text)), sddlRevision,
		uintptr(unsafe.Pointer(&pipe.security.SecurityDescriptor)), 0)
	if made == 0 {
		return fmt.Errorf("the access list cannot be made: %w", err)
	}
	return nil
}

func (pipe *namedPipe) makeInstance(flags uintptr) error {
	path, err := syscall.UTF16PtrFromString(pipe.path)
	if err != nil {
		return fmt.Errorf("%q is no name for a pipe: %w", pipe.path, err)
	}
	instance, _, err := createNamedPipe.Call(uintptr(unsafe.Pointer(path)), pipeAccessDuplex|flags,
		pipeRejectRemoteClients, pipeUnlimitedInstances, bufferBytes, bufferBytes, 0,
		uintptr(unsafe.Pointer(&pipe.security)))
	pipe.waiting = syscall.Handle(instance)
	if pipe.waiting == syscall.InvalidHandle {
		return fmt.Errorf("%s cannot be served: %w", pipe.path, err)
	}
	return nil
}

// accept waits for the next connection.
func (pipe *namedPipe) accept() (io.ReadWriteCloser, error) {
	for {
		connected, _, err := connectNamedPipe.Call(uintptr(pipe.waiting), 0)
		instance := pipe.waiting
		if failed := pipe.makeInstance(0); failed != nil {
			return nil, failed
		}
		if connected != 0 || err == errorPipeConnected {
			return os.NewFile(uintptr(instance), pipe.path), nil
		}
		syscall.CloseHandle(instance)
		if err != errorNoData { // which says: it was connected, and is gone already
			return nil, fmt.Errorf("%s cannot be served: %w", pipe.path, err)
		}
	}
}
