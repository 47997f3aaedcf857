#!/usr/bin/python3
"""The schema of scenarios, the readers of the program and the guide know the same names, and schema and readers take the
same scenarios: agreement.py VERDICTS SOURCE. VERDICTS is the program of verdicts.cpp, SOURCE the project's folder."""
import json
import pathlib
import re
import subprocess
import sys

from jsonschema import Draft202012Validator

verdicts, source = sys.argv[1], pathlib.Path(sys.argv[2])
text = (source / "docs/scenario.schema.json").read_text()
schema = json.loads(text)
Draft202012Validator.check_schema(schema)
validator = Draft202012Validator(schema)

ODD = [None, True, -1, 0, 3, 1.5, 3.0, "", "x", [], {}]


def slips(value):
    """Every value that comes of this one by one slip: a part of it left out, replaced by something odd, or with a
    member too many."""
    yield from ODD
    if isinstance(value, dict):
        yield value | {"surplus": 1}
        for name, member in value.items():
            yield {key: each for key, each in value.items() if key != name}
            yield from (value | {name: slip} for slip in slips(member))
    if isinstance(value, list):
        for i, element in enumerate(value):
            yield from (value[:i] + [slip] + value[i + 1 :] for slip in slips(element))


def step(arguments):
    return {"steps": [{"at": 0} | arguments]}


def backend(route):
    return {"steps": [], "backend": [route]}


def response(members):
    return backend({"method": "GET", "path": "/", "responses": [members]})


# What no example has; and what goes beyond one slip.
GOOD = [
    {"steps": [], "name": "", "seed": -9223372036854775808, "until": 0.5},
    {"steps": [], "start": "2026-01-01T00:00:00.25Z"},
    {"steps": [], "hosts": {"platform": {"nightly": "https://n.example"}, "transmission": {}}},
    {"steps": [], "device": {"files": {"..a": ""}}},
    step({"do": "tap", "delivered": 0, "actionIdentifier": "a"}),
    step({"do": "clearLogs", "at": 1e11}),
]
BAD = [
    {"steps": [], "until": 1e12},
    {"steps": [], "start": "2026-01-01T00:00:00"},
    {"steps": [], "start": "2026-01-01T00:00:00+01:00"},
    {"steps": [], "hosts": {"platform": {"nightly": 1}}},
    {"steps": [], "hosts": {"platform": {"test": "https://t.example"}}},
    {"steps": [], "hosts": {"plattform": {}}},
    {"steps": [], "device": {"files": {"..": ""}}},
    {"steps": [], "device": {"files": {"a/b": ""}}},
    step({"do": "fix", "fixes": [], "latitude": 1}),
    step({"do": "track", "points": [[1, 2]], "speed": 1, "file": "x.gpx"}),
    step({"do": "track", "points": [[1, 2]]}),
    step({"do": "application", "to": "active", "signal": "didBecomeActive"}),
    step({"do": "start", "apiKey": "K", "appId": "A"}),
    step({"do": "tap", "delivered": 0, "badge": 1}),
    step({"do": "store", "key": "k", "value": {"text": "", "base64": ""}}),
    step({"do": "store", "key": "k", "value": {"base64": "AA"}}),
    step({"do": "clearLogs", "at": 1e12}),
]


definition = schema["$defs"]
steps = [definition[each["$ref"].rpartition("/")[2]] for each in schema["properties"]["steps"]["items"]["oneOf"]]


def parts():
    """The parts of the schema that carry examples, each with the scenario around one."""
    for each in steps:
        yield each, lambda value: {"steps": [value]}
    yield definition["device"], lambda value: {"steps": [], "device": value}
    yield definition["route"], backend
    yield definition["response"], response


page = (source / "docs/scenario-format.md").read_text()
good = GOOD + [json.loads(re.search(r"```json\n(.*?)```", page, re.S)[1])]
scenarios = sorted((source / "tests/scenarios").glob("*.json"))
assert scenarios
good += [json.loads(path.read_text()) for path in scenarios]
slipped = [slip for each in GOOD if "hosts" not in each for slip in slips(each)]  # a schema cannot say what a URL is
for part, scenario in parts():
    for example in part["examples"]:
        good.append(scenario(example))
        slipped += [scenario(slip) for slip in slips(example)]

cases = good + BAD + slipped
told, *read = subprocess.run(
    [verdicts, source / "tests/scenarios"],
    input="".join(json.dumps(case) + "\n" for case in cases),
    stdout=subprocess.PIPE,
    text=True,
    check=True,
).stdout.splitlines()
assert len(read) == len(cases)
built_in = json.loads(told)
faults = []


def compare(what, in_schema, in_program):
    if in_schema != in_program:
        faults.append(f"{what}: {in_schema} in the schema, {in_program} in the program")


def names_in(shape):
    return sorted(shape["properties"].keys() - {"at", "do"})


def calls(shape):
    call = shape["properties"]["do"]
    return call.get("enum") or [call["const"]]


if text != built_in["schema"]:
    faults.append("the schema that is built in is not the one in the documentation")
shapes = definition | {"scenario": schema, "hosts": schema["properties"]["hosts"]}
for name, members in built_in["members"].items():
    compare(name, names_in(shapes[name]), sorted(members))
by_table = sorted([name, sorted(arguments)] for name, arguments in built_in["steps"])
compare("steps", sorted([name, names_in(shape)] for shape in steps for name in calls(shape)), by_table)

names = built_in["events"] + [name for call, arguments in by_table for name in [call, *arguments]]
for part in ["scenario", "device", "response"]:
    names += built_in["members"][part]
faults += [f"not in the guide: {name}" for name in names if f"`{name}`" not in page and f'"{name}"' not in page]

for i, (case, taken) in enumerate(zip(cases, read)):
    by_schema = validator.is_valid(case)
    expected = i < len(good) if i < len(good) + len(BAD) else by_schema
    if (by_schema, taken == "1") != (expected, expected):
        faults.append(f"schema {by_schema}, readers {taken == '1'}: {json.dumps(case)}")
print(*faults, sep="\n")
print(f"{len(good)} good, {len(BAD)} bad, {len(slipped)} slips ({read.count('0')} refused): {len(faults)} faults")
sys.exit(len(faults) > 0)
