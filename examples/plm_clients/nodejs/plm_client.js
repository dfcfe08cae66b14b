// A PLM client in Node.js: a library for JSON-RPC frames and messages, Node's "net" for the pipe.
//
// Node cannot give the pipe an access list; docs/plm-client-guide.md says what that means.
'use strict';

const net = require('net');
const rpc = require('vscode-jsonrpc/node');

const { answerTo, makeCommands } = require('./commands');
const { HELP, UsageError, defaultPipe, parseOptions } = require('./options');

const EXIT_FAILURE = 2;

/** Ends the program. Never returns. */
function fail(message) {
  process.stderr.write(`plm_client: ${message}\n`);
  process.exit(EXIT_FAILURE);
}

/** Answers the requests of one CAD application until it closes the connection. */
function serve(socket, commands) {
  const connection = rpc.createMessageConnection(
    new rpc.SocketMessageReader(socket),
    new rpc.SocketMessageWriter(socket)
  );
  // The library answers other methods, such as "ping", with the error -32601, and an exception with -32603.
  connection.onRequest('invoke', ({ command, request }) => {
    console.log(`asked ${command} ${request}`);
    const answer = answerTo(commands, command, request);
    console.log(`answered ${answer}`);
    return { answer };
  });
  // After a broken frame nobody knows where the next one begins.
  connection.onError(([error]) => {
    console.log(`connection closed: ${error.message}`);
    socket.destroy();
  });
  connection.onClose(() => connection.dispose());
  connection.listen();
}

function main() {
  const options = parseOptions(process.argv.slice(2));
  if (options.help) {
    process.stdout.write(HELP);
    return;
  }
  const pipe = `\\\\.\\pipe\\${options.pipe || defaultPipe()}`;
  const commands = makeCommands(options);
  const server = net.createServer((socket) => serve(socket, commands));
  server.on('error', (error) => {
    if (error.code === 'EADDRINUSE') fail(`${pipe} is served already, by this or by another program`);
    fail(`${pipe} cannot be served: ${error.message}`);
  });
  server.listen(pipe, () => console.log(`serving ${pipe}`));
}

try {
  main();
} catch (error) {
  if (!(error instanceof UsageError)) throw error;
  fail(error.message);
}
