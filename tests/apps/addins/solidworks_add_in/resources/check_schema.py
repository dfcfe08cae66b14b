"""Says which JSON files a JSON Schema takes.

usage: check_schema.py SCHEMA FILE ...

Prints one line for each file: its name, a tab, and what is wrong with it or nothing. Fails if the schema is not valid
under the rules of draft 7, which it must name.
"""
import json
import pathlib
import sys

from jsonschema import Draft7Validator, validators


def fault_of(file, validator):
    """What the schema, or JSON itself, says against the file; empty if nothing."""
    try:
        instance = json.loads(file.read_text(encoding="utf-8-sig"))
    except ValueError as error:
        return f"not JSON: {error}"
    faults = [f"{error.json_path}: {error.message}" for error in validator.iter_errors(instance)]
    return "; ".join(faults).replace("\n", " ")


def main(schema_file, *files):
    schema = json.loads(pathlib.Path(schema_file).read_text(encoding="utf-8"))
    if validators.validator_for(schema, default=None) is not Draft7Validator:
        sys.exit(f"{schema_file} does not name draft 7")
    Draft7Validator.check_schema(schema)
    for file in map(pathlib.Path, files):
        print(f"{file.name}\t{fault_of(file, Draft7Validator(schema))}")


main(*sys.argv[1:])
