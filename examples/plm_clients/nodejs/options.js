// The command line, and the pipe's default name.
'use strict';

const { spawnSync } = require('child_process');
const fs = require('fs');
const path = require('path');

const HELP = `usage: node plm_client.js [--file PATH] [--user NAME] [--pipe NAME]

A PLM client for the TAVO SolidWorks Integration. It ends at Ctrl-C.

  --file PATH   the file that the data selector opens; without it, as if the person had closed the panel
  --user NAME   the name that a login answers with; default: kim
  --pipe NAME   the pipe's name, without \\\\.\\pipe\\; default: tavo-plm-client-<SID of the user>
`;

/** What a person has to correct on the command line. */
class UsageError extends Error {}

/** The options that `words` give. @throws UsageError that names the word. */
function parseOptions(words) {
  const options = { user: 'kim', help: false };
  for (let place = 0; place < words.length; place += 1) {
    const word = words[place];
    if (word === '--help') {
      options.help = true;
    } else if (['--file', '--user', '--pipe'].includes(word)) {
      place += 1;
      if (place === words.length || words[place] === '') throw new UsageError(`${word} needs a value`);
      options[word.slice(2)] = words[place];
    } else {
      throw new UsageError(`no such option: ${word}; see --help`);
    }
  }
  if (options.file) {
    options.file = path.resolve(options.file);
    if (!fs.existsSync(options.file)) throw new UsageError(`--file: there is no ${options.file}`);
  }
  return options;
}

/** The SID in the output of "whoami /user /fo csv /nh": "MACHINE\\name","S-1-5-21-...". */
function sidIn(output) {
  const found = /"(S-1-[0-9-]+)"\s*$/.exec(output);
  if (!found) throw new UsageError('whoami does not tell the SID of the user; name the pipe with --pipe');
  return found[1];
}

/** The name of the pipe on which the add-in looks for the client of this user. */
function defaultPipe() {
  // The full path: otherwise a program of this name in the current folder would be run.
  const whoami = path.join(process.env.SystemRoot, 'System32', 'whoami.exe');
  const { stdout } = spawnSync(whoami, ['/user', '/fo', 'csv', '/nh'], { encoding: 'latin1' });
  return `tavo-plm-client-${sidIn(stdout)}`;
}

module.exports = { HELP, UsageError, defaultPipe, parseOptions, sidIn };
