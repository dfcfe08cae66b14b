// What the client answers to the add-in's commands. A real client asks its PLM system, and shows a panel to the person.
'use strict';

/** The answer that says: the person closed the panel. */
const NO_ANSWER = '';

/** The number of every material: there is no PLM system behind this client that would make others. */
const MATERIAL_NUMBER = 'M-4711';

/** A request text as an object. The add-in sends the empty text if it has nothing to say. */
function parsed(request) {
  return request === '' ? {} : JSON.parse(request);
}

/**
 * The commands of one client, by their names. Each takes the request text and returns an object, which is sent as JSON
 * text, or NO_ANSWER.
 */
function makeCommands({ user, file }) {
  function selectFile(request) {
    const login = parsed(request); // what QD_PLMLogin answered, here or in an earlier process
    if (login.user !== user) throw new Error(`${login.user} is not logged in here, but ${user}`);
    return file ? { OpenFile: [file] } : NO_ANSWER;
  }

  function createMaterial(request) {
    const properties = parsed(request).extract_info || {};
    return { data: { description: properties.Description || '', number: MATERIAL_NUMBER } };
  }

  function fillFromMaterial(request) {
    const created = parsed(request).backfill_info_from_create_material;
    const number = created ? created.number : MATERIAL_NUMBER; // without one just created: the person chooses
    return { material_property_back_fill: { Number: number } };
  }

  return {
    QD_PLMLogin: () => ({ __InvokeResult__: true, user }),
    QD_PLMLogout: () => ({ __InvokeResult__: true }),
    QD_PLMDataSelector: selectFile,
    QD_PLMCreateMaterial: createMaterial,
    QD_PLMMaterialBackFill: fillFromMaterial,
  };
}

/** The answer text to a command. Commands that this client does not know end as if the person had closed the panel. */
function answerTo(commands, command, request) {
  const known = Object.prototype.hasOwnProperty.call(commands, command);
  const answer = known ? commands[command](request) : NO_ANSWER;
  return answer === NO_ANSWER ? NO_ANSWER : JSON.stringify(answer);
}

module.exports = { answerTo, makeCommands };
