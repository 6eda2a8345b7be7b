#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Checks the backend's definitions against each other and against the program.

The operations are validated against the schema as the service would extend it: for each table the
fields to find, list, insert and upsert its rows, and the way back of each reference. Then: every
operation is closed to strangers and looks at the token, its variables are those that the program
sends, and it selects what the program reads.
"""

import re
import sys
from pathlib import Path

import yaml
from graphql import build_ast_schema, parse, validate
from graphql.language import ast

HERE = Path(__file__).parent
CLIENT = HERE.parent.parent / "src/sync/DataConnectHistory.cpp"
SCALARS = ("Boolean", "Int", "String", "Timestamp", "UUID")
READ = {
    "CreateNote": {"note_insert"},
    "ListNotes": {
        "notes", "notes.id", "notes.sourceText", "notes.translation", "notes.explanation",
        "notes.createdAt", "notes.followUps_on_note", "notes.followUps_on_note.id",
        "notes.followUps_on_note.question", "notes.followUps_on_note.answer",
    },
}
GENERAL = """
schema { query: Query mutation: Mutation }
scalar Timestamp
scalar UUID
enum AccessLevel { PUBLIC USER_ANON USER USER_EMAIL_VERIFIED NO_ACCESS }
enum OrderDirection { ASC DESC }
directive @auth(level: AccessLevel, expr: String) on QUERY | MUTATION
directive @transaction on MUTATION
directive @redact on FIELD
directive @check(expr: String!, message: String) on FIELD
directive @table(key: String) on OBJECT
directive @default(expr: String) on FIELD_DEFINITION
directive @index on FIELD_DEFINITION
"""


def lower_first(name):
    return name[0].lower() + name[1:]


def named(type_node):
    while not isinstance(type_node, ast.NamedType):
        type_node = type_node.type
    return type_node.name.value


def directives(node):
    return {directive.name.value: directive for directive in node.directives}


def generated(tables):
    """The service's own part of the schema, as text."""
    text, queries, mutations, back = [GENERAL], [], ["query: Query"], {}
    for scalar in SCALARS:
        text.append(f"input {scalar}_Filter {{ eq: {scalar} eq_expr: String isNull: Boolean }}")
    for name, table in tables.items():
        one, many = lower_first(name), lower_first(name) + "s"
        key = "id"
        for argument in directives(table)["table"].arguments:
            key = argument.value.value
        data, where, order, keys = [], [], [], []
        for field in table.fields:
            column, kind = field.name.value, named(field.type)
            if kind in tables:
                data += [f"{column}Id: UUID", f"{column}: {kind}_Key"]
                where.append(f"{column}: {kind}_Filter")
                back.setdefault(kind, []).append((f"{many}_on_{column}", name))
                continue
            data += [f"{column}: {kind}", f"{column}_expr: String"]
            where.append(f"{column}: {kind}_Filter")
            order.append(f"{column}: OrderDirection")
            if column == key:
                keys += [f"{column}: {kind}", f"{column}_expr: String"]
        lists = f"where: {name}_Filter, orderBy: [{name}_Order!], limit: Int = 100"
        text += [
            f"scalar {name}_KeyOutput",
            f"input {name}_Key {{ {' '.join(keys)} }}",
            f"input {name}_Data {{ {' '.join(data)} }}",
            f"input {name}_Filter {{ {' '.join(where)} }}",
            f"input {name}_Order {{ {' '.join(order)} }}",
        ]
        queries += [f"{one}(key: {name}_Key): {name}", f"{many}({lists}): [{name}!]!"]
        mutations += [f"{one}_{verb}(data: {name}_Data!): {name}_KeyOutput!"
                      for verb in ("insert", "upsert")]
    text += [f"type Query {{ {' '.join(queries)} }}", f"type Mutation {{ {' '.join(mutations)} }}"]
    return "\n".join(text), back


def with_ways_back(source, back):
    """The schema's own text, with the fields that lead back along its references."""
    for name, fields in back.items():
        added = "".join(
            f"\n  {field}(where: {target}_Filter, orderBy: [{target}_Order!], limit: Int = 100):"
            f" [{target}!]!" for field, target in fields)
        source = re.sub(rf"(type {name} @table[^{{]*{{)", rf"\1{added}", source)
    return source


def selected(selections, prefix=""):
    found = set()
    for field in selections.selections if selections else []:
        path = prefix + field.name.value
        found |= {path} | selected(field.selection_set, path + ".")
    return found


def sent_by_client(operation):
    """The names of the variables that the program sends with an operation."""
    source = CLIENT.read_text(encoding="utf-8")
    start = source.find(f'u"{operation}"_s')
    if start < 0:
        return None
    return set(re.findall(r'{u"(\w+)"_s,', source[start:source.index(";", start)]))


def problems_of(operation):
    name = operation.name.value
    has = directives(operation)
    level = [argument.value.value for argument in has["auth"].arguments
             if argument.name.value == "level"] if "auth" in has else []
    if level != ["USER"]:
        yield f"{name} is not closed to strangers"
    if "auth.uid" not in operation.loc.source.body[operation.loc.start:operation.loc.end]:
        yield f"{name} does not look at the token"
    declared = {variable.variable.name.value: variable.type
                for variable in operation.variable_definitions or []}
    sent = sent_by_client(name)
    if sent is None:
        yield f"{name} is not called by the program"
    elif sent != set(declared):
        yield f"{name} has {sorted(declared)}, the program sends {sorted(sent)}"
    if name == "UpsertProfile" and any(isinstance(kind, ast.NonNullType)
                                       for kind in declared.values()):
        yield f"{name} wants what people may leave out"
    missing = READ.get(name, set()) - selected(operation.selection_set)
    if missing:
        yield f"{name} lacks {sorted(missing)}"


def problems():
    service = yaml.safe_load((HERE / "dataconnect.yaml").read_text(encoding="utf-8"))
    schema_source = "\n".join(path.read_text(encoding="utf-8")
                              for path in sorted((HERE / service["schema"]["source"]).glob("*.gql")))
    tables = {definition.name.value: definition for definition in parse(schema_source).definitions
              if "table" in directives(definition)}
    extension, back = generated(tables)
    schema = build_ast_schema(parse(with_ways_back(schema_source, back) + extension))
    names = set()
    for folder in service["connectorDirs"]:
        connector = yaml.safe_load((HERE / folder / "connector.yaml").read_text(encoding="utf-8"))
        if not connector.get("connectorId"):
            yield f"{folder} has no connectorId"
        for path in sorted((HERE / folder).glob("*.gql")):
            document = parse(path.read_text(encoding="utf-8"))
            yield from (f"{path.name}: {error}" for error in validate(schema, document))
            for operation in document.definitions:
                names.add(operation.name.value)
                yield from problems_of(operation)
    called = set(re.findall(r'u"([A-Z]\w+)"_s,', CLIENT.read_text(encoding="utf-8")))
    if called != names:
        yield f"the program calls {sorted(called)}, there are {sorted(names)}"


FOUND = list(problems())
for problem in FOUND:
    print(problem)
sys.exit(bool(FOUND))
