// What the client answers to the add-in's commands. A real client asks its PLM system, and shows a panel to the person.
'use strict';

/** The answer that says: the person closed the panel. */
const NO_ANSWER = '';

/** A request text as an object. The add-in sends the empty text if it has nothing to say. */
function parsed(request) {
  return request === '' ? {} : JSON.parse(request);
}

/**
 * The commands of one client, by their names. Each takes the request text and returns an object, which is sent as JSON
 * text, or NO_ANSWER.
 */
function makeCommands({ user, file }) {
  let materials = 0;

  function selectFile(request) {
    const login = parsed(request); // what QD_PLMLogin answered, here or in an earlier process
    if (login.user !== user) throw new Error(`${login.user} is not logged in here, but ${user}`);
    return file ? { OpenFile: [file] } : NO_ANSWER;
  }

  function createMaterial(request) {
    const properties = parsed(request).extract_info || {};
    materials += 1;
    return { data: { description: properties.Description || '', number: `M-${materials}` } };
  }

  function fillFromMaterial(request) {
    const created = parsed(request).backfill_info_from_create_material;
    const number = created ? created.number : 'M-0'; // without one just created: the person chooses
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
