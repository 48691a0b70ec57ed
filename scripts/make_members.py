#!/usr/bin/env python3
"""Writes the parts of the public headers that follow from the tables of the control.

include/qvgraph/styles.h holds the arguments of the style methods, include/qvgraph/members.inc the declarations of
the style methods and properties inside class qvGraph, include/qvgraph/options.h the properties as handles have them,
with src/control/handle_properties.def as the table behind it. They are made of src/control/properties.def, styles.def
and the sentences of docs/members.txt.

Usage: make_members.py           writes these files
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


# Handles: whose properties they have, and by which names. A property's name without that of its record, in words
# joined by "_", unless it stands in WORDS.
OWNERS = {"Axis": "an axis", "Legend": "the legend of a graph", "Graph": "a graph", "Data": "a data set"}
PREFIXES = {"Axis": ("Axis",), "Legend": ("LegendTable", "Legend"), "Graph": ("Graph",), "Data": ("Data",)}
WORDS = {"AxisValue1": "from", "AxisValue2": "to", "AxisMajGridColor": "major_grid_color",
         "AxisMinGridColor": "minor_grid_color", "AxisGridMajor": "major_grid", "AxisGridMinor": "minor_grid",
         "AxisLabelsHoriz": "label_angle", "AxisDP": "decimal_places", "Bar3D": "bar_3d", "MathFunc": "formula",
         "MathFuncX1": "formula_from", "MathFuncX2": "formula_to", "LegendGshift": "gradient_shift"}
# What options have beyond properties. Axes of a data set: name, sentence. Colours that set several properties.
AXES = [("axis", "The axis, x or y, of the same graph that the data lie on; empty, the graph's first."),
        ("other_axis", "The axis of the other kind, where that is not the graph's first either."),
        ("color_axis", "The colour bar that gives values their colours, of the same graph; empty, none.")]
COLORS = [("Legend", "color", "Both colours of the legend's ground.", ("LegendTableColor1", "LegendTableColor2")),
          ("Graph", "border_color", "Both colours of the band around the plot area.", ("BorderColor1", "BorderColor2")),
          ("Graph", "plot_area_color", "Both colours of the plot area.", ("PlotAreaColor1", "PlotAreaColor2")),
          ("Data", "color", "The colour of line, symbols, bars, filled area and text at once.",
           ("DataLineColor", "DataSymbolColor", "DataTextColor"))]


def owner_of(name, target):
    if target == "graph":
        return "Legend" if name.startswith("Legend") else "Graph"
    return {"axis": "Axis", "data": "Data"}.get(target)


def handle_name(name, owner):
    if name in WORDS:
        return WORDS[name]
    prefix = next((p for p in PREFIXES[owner] if name.startswith(p) and name != p), "")
    rest = re.sub(r"GS(hift|tyle)$", r"GradientS\1", name[len(prefix):])
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])|(?<=^x)(?=A)", "_", rest).lower()


def handle_rows():
    """Each property of a handle as (owner, name, property, kind, whether it can be set)."""
    found = []
    for macro, (name, kind, target, *_) in rows("properties.def", ("QV_PROPERTY", "QV_READ_ONLY_PROPERTY")):
        if owner := owner_of(name, target):
            kind = "text" if kind == "any" else kind
            found.append((owner, handle_name(name, owner), name, kind, macro == "QV_PROPERTY"))
    names = [row[:2] for row in found] + [color[:2] for color in COLORS]
    twice = {f"{owner} {name}" for owner, name in names if names.count((owner, name)) > 1}
    assert not twice, f"give one of each a name of its own in WORDS: {twice}"
    return found


def options_of(owner, said):
    lines = ["", f"/// What {OWNERS[owner]} can be given, in this order; what is left out stays as it is.",
             f"struct {owner}Options {{"]
    for name, sentence in AXES if owner == "Data" else []:
        lines += [*comment(sentence, 4), f"    AxisProperties {name} = {{}};"]
    for color_owner, name, sentence, _ in COLORS:
        if color_owner == owner:
            lines += [*comment(sentence, 4), f"    std::optional<ColorValue> {name} = {{}};"]
    for row_owner, name, stored, kind, can_be_set in handle_rows():
        if row_owner == owner and can_be_set:
            lines += comment(f"{stored}: {said[stored]}", 4)
            lines.append(f"    std::optional<{parameter_type(kind)}> {name} = {{}};")
    return lines + ["};"]


def properties_of(owner, said):
    lines = ["", f"/// The properties of {OWNERS[owner]}, read without an argument and set with one.",
             f"class QV_EXPORT {owner}Properties : public Handle {{", "public:",
             "    /// Sets what is given, in the order of the options; a fault leaves those before it set.",
             f"    void set({owner}Options const& options) const;", ""]
    for row_owner, name, stored, kind, can_be_set in handle_rows():
        if row_owner == owner:
            lines += comment(f"{stored}: {said[stored]}", 4)
            lines.append(f"    {value_type(kind)} {name}() const;")
            if can_be_set:
                lines.append(f"    void {name}({argument_type(kind)} value) const; ///< sets it")
    return lines + ["};"]


def options_header(said):
    lines = ["// The properties of axes, legends, graphs and data sets as handles have them: one by one, and as options of",
             "// which any may be left out, y_axis.set({.title = \"speed\", .log = true}). Made by scripts/make_members.py.",
             "#pragma once", "", '#include "qvgraph/checked.h"', '#include "qvgraph/handle.h"', "",
             "#include <optional>", "#include <string>", "#include <string_view>", "", "namespace qv {"]
    for owner in OWNERS:
        lines += options_of(owner, said) + properties_of(owner, said)
    return lines + ["", "} // namespace qv", ""]


def handle_table(said):
    lines = ["// The properties of handles, one row each. Made by scripts/make_members.py.", "//",
             "//   QV_HANDLE_PROPERTY(owner, name, property, kind)",
             "//   QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property, kind)",
             "//   QV_HANDLE_COLOR(owner, name, property): an option that sets several properties has as many rows", ""]
    lines += [f"QV_HANDLE_COLOR({owner}, {name}, {stored})" for owner, name, _, all_stored in COLORS
              for stored in all_stored]
    for owner, name, stored, kind, can_be_set in handle_rows():
        macro = "QV_HANDLE_PROPERTY" if can_be_set else "QV_HANDLE_READ_ONLY_PROPERTY"
        lines.append(f"{macro}({owner}, {name}, {stored}, {kind})")
    return lines + ["", "#undef QV_HANDLE_PROPERTY", "#undef QV_HANDLE_READ_ONLY_PROPERTY", "#undef QV_HANDLE_COLOR", ""]


MADE = {"include/qvgraph/styles.h": styles_header, "include/qvgraph/members.inc": members,
        "include/qvgraph/options.h": options_header, "src/control/handle_properties.def": handle_table}


def main():
    said = sentences()
    stale = []
    for name, lines_of in MADE.items():
        file = ROOT / name
        made = "\n".join(lines_of(said))
        if file.exists() and file.read_text(encoding="utf-8") == made:
            continue
        stale.append(name)
        if "--check" not in sys.argv:
            file.write_text(made, encoding="utf-8")
    if stale and "--check" in sys.argv:
        print(f"{', '.join(stale)}: do not follow the tables; run scripts/make_members.py")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
