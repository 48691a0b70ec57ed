#!/usr/bin/env python3
"""Writes the parts of the public headers that follow from the tables of the control.

include/qvgraph/styles.h holds the arguments of the style methods, include/qvgraph/members.inc the declarations of
the style methods and properties inside class qvGraph. They are made of src/control/properties.def, styles.def and
the sentences of docs/members.txt.

Usage: make_members.py           writes both files
       make_members.py --check   changes nothing; fails when a file is not what it would write
"""
import pathlib
import re
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parent.parent
WIDTH = 110

NUMBERS = {"boolean": "bool", "uint8": "std::uint8_t", "int16": "std::int16_t", "int32": "std::int32_t",
           "float32": "float", "float64": "double"}
TARGETS = {"axis": "the selected axis", "graph": "the current graph", "page": "the page",
           "data": "the selected data set", "control": "the control"}


def value_type(kind):
    return {"color": "Color", "text": "std::string", "any": "std::string"}.get(kind) or NUMBERS[kind]


def argument_type(kind):
    named = {"color": "ColorValue", "text": "std::string_view", "any": "Variant const&"}
    return named.get(kind) or f"Checked<{NUMBERS[kind]}>"


def parameter_type(kind):
    return {"color": "ColorValue", "text": "std::string"}.get(kind) or f"Checked<{NUMBERS[kind]}>"


def rows(file, macros):
    """Each row of a table as (macro, columns)."""
    for line in (ROOT / "src/control" / file).read_text(encoding="utf-8").splitlines():
        found = re.match(r"(QV_\w+)\((.*)\)\s*$", line)
        if found and found.group(1) in macros:
            columns = re.findall(r'(?:[^,("]|"[^"]*"|\([^)]*\))+', found.group(2))
            yield found.group(1), [column.strip() for column in columns]


def sentences():
    found = {}
    for line in (ROOT / "docs/members.txt").read_text(encoding="utf-8").splitlines():
        match = re.match(r"[+-]?(\w+): (.+)", line)
        if match:
            found.setdefault(match.group(1), match.group(2))
    return found


def comment(text, indent):
    """A doc comment of as many lines as it takes."""
    start = " " * indent + "/// "
    return textwrap.wrap(text, WIDTH, initial_indent=start, subsequent_indent=start, break_on_hyphens=False)


def style_methods():
    methods = []
    for macro, columns in rows("styles.def", ("QV_STYLE", "QV_PARAMETER")):
        if macro == "QV_STYLE":
            methods.append((columns[0], columns[1], []))
        else:
            methods[-1][2].append(columns[1:])
    return methods


def styles_header(said):
    lines = ["// The arguments of the style methods, each of which sets a group of related properties in one call:",
             "// page.LegendTableStyle({.EdgeThickness = 2}) names what it sets, page.GraphPosition({0, 0, 50, 50}) goes by",
             "// order. What is left out keeps its default, which for most parameters leaves the property as it is.",
             "// Made by scripts/make_members.py.", "#pragma once", "", '#include "qvgraph/checked.h"', "",
             "#include <string>", "", "namespace qv {"]
    for method, _, parameters in style_methods():
        lines += ["", *comment(f"Of `qvGraph::{method}`. {said[method]}", 0), f"struct {method}Arguments {{"]
        for name, kind, default, _, stored in parameters:
            lines += comment(f"{stored}: {said[stored]}", 4)
            lines.append(f"    {parameter_type(kind)} {name} = {default};")
        lines.append("};")
    return lines + ["", "} // namespace qv", ""]


def members(said):
    lines = ["// Declarations inside class qvGraph. Made by scripts/make_members.py.", "",
             "    /// \\name Style methods",
             "    /// Each sets several properties. An omitted Color2 becomes Color1; a caller who passes a variable finds it",
             "    /// there. Failures are reported through ErrorMsg; settings made before the failing one stay.", "    /// \\{",
             ""]
    for method, _, _ in style_methods():
        lines += comment(said[method], 4)
        lines += [f"    void {method}({method}Arguments& arguments);",
                  f"    void {method}({method}Arguments const& arguments = {{}}); ///< the same"]
    lines += ["    /// \\}", "", "    /// \\name Properties",
              "    /// Read without an argument, set with one. Fault 9 without the record that they belong to, fault 6 for a",
              "    /// number that does not fit.", "    /// \\{", ""]
    for macro, columns in rows("properties.def", ("QV_PROPERTY", "QV_READ_ONLY_PROPERTY")):
        name, kind, target = columns[:3]
        lines += comment(f"Of {TARGETS[target]}. {said[name]}", 4)
        lines.append(f"    {value_type(kind)} {name}() const;")
        if macro == "QV_PROPERTY":
            lines.append(f"    void {name}({argument_type(kind)} value); ///< sets it")
    return lines + ["    /// \\}", ""]


def main():
    said = sentences()
    stale = []
    for name, lines in (("styles.h", styles_header(said)), ("members.inc", members(said))):
        file = ROOT / "include/qvgraph" / name
        made = "\n".join(lines)
        if file.exists() and file.read_text(encoding="utf-8") == made:
            continue
        stale.append(name)
        if "--check" not in sys.argv:
            file.write_text(made, encoding="utf-8")
    if stale and "--check" in sys.argv:
        print(f"include/qvgraph: {', '.join(stale)} do not follow the tables; run scripts/make_members.py")
        return 1
    return 0


sys.exit(main())
