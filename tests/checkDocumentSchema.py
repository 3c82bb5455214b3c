"""Holds documents against the schema: checkDocumentSchema.py SCHEMA FILE...

Each FILE is a document, or a page whose ```json blocks are documents. The schema must also refuse
each document with a field that it does not know, wherever that is added.
"""

import copy
import json
import re
import sys

try:
    import jsonschema
except ImportError:
    print("skipped: there is no python3-jsonschema")
    sys.exit(77)


def documents(file):
    text = open(file, encoding="utf-8").read()
    blocks = re.findall(r"^```json\n(.*?)^```", text, re.S | re.M) if file.endswith(".md") else [text]
    return [json.loads(block) for block in blocks]


def objects(value):
    """All objects within the value, itself among them."""
    if isinstance(value, dict):
        yield value
    for part in value.values() if isinstance(value, dict) else value if isinstance(value, list) else []:
        yield from objects(part)


def main(schema_file, *files):
    schema = json.load(open(schema_file, encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    checked = 0
    for file in files:
        for document in documents(file):
            validator.validate(document)
            for index in range(sum(1 for _ in objects(document))):
                spoilt = copy.deepcopy(document)
                list(objects(spoilt))[index]["unknown"] = 1
                assert not validator.is_valid(spoilt), f"{file}: a field more in object {index} is let through"
            checked += 1
    assert checked >= len(files), "a page without a document"
    print(f"told: {checked} documents")


main(*sys.argv[1:])
