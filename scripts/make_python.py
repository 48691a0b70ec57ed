#!/usr/bin/env python3
"""Writes the Python module's tables of members, and its stub file, for a build of that module.

What there is comes from the tables and headers that the C++ members are made of: properties.def and styles.def, the
rows of method_table.cpp, the declarations of qvGraph.h, handles.h and EventSink.h, and the sentences of
docs/members.txt. So no member is written twice, and a new one is there in Python too.

Usage: make_python.py FOLDER
"""
import dataclasses
import json
import keyword
import pathlib
import re
import sys
import textwrap

import make_members as members

HEADERS = members.ROOT / "include/qvgraph"
# The handles by their names in Python.
HANDLES = {"GraphHandle": "Graph", "AxisHandle": "Axis", "LegendHandle": "Legend", "DataHandle": "DataSet"}
OPTIONS = {"Graph": "Graph", "Axis": "Axis", "Legend": "Legend", "DataSet": "Data"}
# Members of C++ that a program in Python needs too, beside those by name.
FURTHER = ("graph graphs find_graph undo_zoom can_undo_zoom show_everything can_show_everything takes_right_click "
           "outline point_read Picture1_MouseDown Picture1_MouseMove Picture1_MouseUp Picture1_DblClick "
           "Picture1_KeyPress HScroll1_Change VScroll1_Change HScroll1_Scroll VScroll1_Scroll").split()
# While these run, other threads of the interpreter run too.
LONG_GROUPS = ("Drawing", "Out of the page")
# What a reference parameter holds before the call matters to these alone.
BOTH_WAYS = {"KeyAscii"}

# Parameters by their type in C++: how overloads tell them apart, their type in stubs.
NUMBER, TEXT, TEXTS, NUMBERS, ANYTHING, DATA_SET, PLACE = (
    "Number", "Text", "Texts", "Numbers", "Anything", "DataSet", "Place")
PARAMETERS = {"double": (NUMBER, "Number"), "ColorValue": (NUMBER, "Color"), "std::string_view": (TEXT, "str"),
              "std::string": (TEXT, "str"), "TextList const&": (TEXTS, "Sequence[str]"),
              "std::span<double const>": (NUMBERS, "ArrayLike"), "Variant const&": (ANYTHING, "float | str"),
              "DataHandle const&": (DATA_SET, "DataSet"), "Point": (PLACE, "tuple[Number, Number]"),
              "int": (NUMBER, "int"), "std::uint8_t": (NUMBER, "int")}
RESULTS = {"void": "None", "bool": "bool", "int": "int", "double": "float", "float": "float", "Color": "int",
           "std::string": "str", "TextList": "list[str]", "Box": "Box", "PointValues": "Points",
           "std::optional<GraphOutline>": "GraphOutline | None",
           **{handle: name for handle, name in HANDLES.items()},
           **{f"std::vector<{handle}>": f"list[{name}]" for handle, name in HANDLES.items()}}
KINDS = {"boolean": "bool", "uint8": "int", "int16": "int", "int32": "int", "float32": "float", "float64": "float",
         "color": "int", "text": "str", "any": "str"}
GIVEN_KINDS = {**KINDS, "color": "Color", "float32": "Number", "float64": "Number", "any": "str | float"}


def python_name(name):
    """The name of C++, with "_" behind one that means something else in Python: from_."""
    return name + "_" if keyword.iskeyword(name) else name


@dataclasses.dataclass
class Parameter:
    type: str
    name: str
    default: str | None

    @property
    def is_options(self):
        return self.type.endswith("Options const&")

    @property
    def is_result(self):
        return self.type.endswith("&") and "const" not in self.type

    @property
    def is_given(self):
        return not self.is_options and (not self.is_result or self.name in BOTH_WAYS)

    @property
    def value_type(self):
        return self.type.rstrip("&").strip() if self.is_result else self.type

    @property
    def kind(self):
        return PARAMETERS[self.value_type][0] if self.value_type in PARAMETERS else NUMBER

    @property
    def annotation(self):
        if self.value_type in PARAMETERS:
            return PARAMETERS[self.value_type][1]
        held = re.sub(r"Checked<(.*)>", r"\1", self.value_type)
        return {"bool": "bool", "float": "Number"}.get(held, "int")

    @property
    def python_default(self):
        known = {"true": "True", "false": "False", "{}": "None"}
        return known.get(self.default, self.default)


@dataclasses.dataclass
class Declaration:
    result: str
    name: str
    parameters: list
    text: str
    group: str

    @property
    def given(self):
        return [p for p in self.parameters if p.is_given]

    @property
    def results(self):
        return [p for p in self.parameters if p.is_result]

    @property
    def options(self):
        return next((p for p in self.parameters if p.is_options), None)


def split_at_commas(text):
    """At those outside of all brackets."""
    parts, depth = [""], 0
    for character in text:
        depth += (character in "<({[") - (character in ">)}]")
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.strip() for part in parts if part.strip()]


def parameter(text):
    declared, _, default = text.partition("=")
    kind, name = re.fullmatch(r"(.+?)\s*(\w+)", declared.strip()).groups()
    kind = kind if kind.endswith(("&", "const")) or "const &" not in kind else kind
    return Parameter(kind.strip(), python_name(name), default.strip() or None)


def declaration(code, text, group):
    found = re.fullmatch(r"(?:virtual )?(.+?)\s*\b(\w+)\((.*)\)\s*(?:const)?(?:\s*\{\})?", code)
    if not found or "operator" in code:
        return None
    result, name, inside = found.groups()
    inside = re.sub(r"/\*(\w+)\*/", r"\1", inside)
    return Declaration(result.strip(), name, [parameter(p) for p in split_at_commas(inside)], text, group)


def declarations(header, class_name):
    """The public functions of a class, with what their comments say."""
    text = (HEADERS / header).read_text(encoding="utf-8")
    body = re.search(rf"^class QV_EXPORT {class_name}\b[^;{{]*\{{\n?(.*?)\}};\n", text, re.S | re.M).group(1)
    body = body.split("private:")[0]
    found, said, code, group = [], [], "", ""
    for line in map(str.strip, body.splitlines()):
        if name := re.match(r"/// \\name (.*)", line):
            group, said = name.group(1), []
        elif line.startswith("///<"):
            found[-1].text += " " + line[4:].strip()
        elif line.startswith("///") or line.startswith("//"):
            said = [] if re.match(r"/// \\[{}]", line) else said + [line.lstrip("/ ").strip()]
        elif not line:
            said = [] if not code else said
        elif not line.endswith(":") and not line.startswith("#"):
            line, _, behind = line.partition("///<")
            code = (code + " " + line.strip()).strip()
            if code.endswith((";", "{}")):
                made = declaration(code.rstrip(";"), " ".join(said + [behind.strip()]).strip(), group)
                found += [made] if made else []
                said, code = [], ""
    return found


# What a member's documentation says.

UNITS = {"mm_across": "millimetres", "mm_down": "millimetres", "half_mm_across": "millimetres", "percent": "percent"}
UNIT_WORDS = ("millimetres", "pixels", "degrees", "percent", "twips", "seconds")
RANGES = {"uint8": "0 to 255", "int16": "-32768 to 32767", "int32": "-2147483648 to 2147483647",
          "float32": "those of 32 bits, up to 3.4e38 either way", "float64": "any, in double precision"}
FAULTS = {"byte": "Fault 6 outside 0 to 255.", "time_zone": "Fault 5 for a name that is no time zone's.",
          "color_table": "Fault 5 for what names no colours.", "levels": "Fault 5 for what is no number or list of numbers.",
          "dashes": "Fault 5 for what is no pattern of dashes."}
AXIS_VALUES = re.compile(r"AxisValue|MarkX|MarkY|BaseValue|MathFuncX|DataText[XY]|BarWidth$|HistogramBinWidth")


def unit_of(name, kind, conversion, sentence):
    if conversion in UNITS:
        return UNITS[conversion]
    if AXIS_VALUES.search(name):
        return "that of the axis's values"
    return next((word for word in UNIT_WORDS if word in sentence), "none")


def values_of(name, kind, conversion, sentence):
    """Which values a property takes, and the fault of others."""
    if kind == "boolean":
        return "Values: True or False."
    if kind == "color":
        return "Values: 0xBBGGRR, or \"#RRGGBB\" when set. Fault 6 beyond 32 bits."
    if kind in ("text", "any"):
        return "Values: a text."
    unit = unit_of(name, kind, conversion, sentence)
    return f"Unit: {unit}. Range: {RANGES[kind]}; Fault 6 for a number that does not fit."


def wrapped(text):
    return "\n".join(textwrap.wrap(text, 100, break_on_hyphens=False, break_long_words=False))


def pythonic(text):
    """A comment of C++ as Python has the same."""
    text = re.sub(r"\(\{(.*?)\}\)", r"(\1)", text.replace("`", ""))
    text = re.sub(r"(?<![\w.])\.(\w+) = ", r"\1=", text).replace("=true", "=True").replace("=false", "=False")
    text = re.sub(r"(?<![\w.])\.(?=[a-z]\w+)", "", text)
    for handle, name in HANDLES.items():
        text = text.replace(handle + "::", name + ".")
    return text


def property_doc(row, said, of_handle):
    macro, (name, kind, target, _, conversion, *_) = row
    parts = [said[name], values_of(name, kind, conversion, said[name]) if macro == "QV_PROPERTY" else "Read only."]
    if conversion in FAULTS and macro == "QV_PROPERTY":
        parts.append(FAULTS[conversion])
    if of_handle:
        parts.append(f"As {name} of the page, but of this one; Fault 91 when it is not there any more.")
    elif target != "control":
        parts.append(f"Of {members.TARGETS[target]}; Fault 9 without it.")
    return wrapped(parts[0]) + "\n\n" + wrapped(" ".join(parts[1:]))


# The tables in C++.

def quoted(text):
    return json.dumps(text, ensure_ascii=False)


def property_rows():
    return list(members.rows("properties.def", ("QV_PROPERTY", "QV_READ_ONLY_PROPERTY")))


def taken_type(kind):
    return {"color": "ColorValue", "text": "std::string", "any": "Variant"}.get(kind) or f"Checked<{members.NUMBERS[kind]}>"


def property_row(owner, name, kind, doc, can_be_set):
    setter = "nullptr"
    if can_be_set:
        setter = (f"[]({owner}& o, py::handle given, Place const& place) "
                  f"{{ o.{name}(read<{taken_type(kind)}>(given, place)); }}")
    return f"{{{quoted(python_name(name))}, {quoted(doc)},\n [](Core const&, {owner}& o) {{ return returned(o.{name}()); }},\n {setter}}},"


def page_property_table(said):
    lines = ["PropertyRow<qvGraph> const page_properties[] = {",
             property_row("qvGraph", "Version", "text", said["Version"], False)]
    for row in property_rows():
        macro, (name, kind, *_) = row
        lines.append(property_row("qvGraph", name, kind, property_doc(row, said, False), macro == "QV_PROPERTY"))
    return lines + ["};"]


def handle_property_table(owner, cpp, said):
    rows = {row[1][0]: row for row in property_rows()}
    lines = [f"PropertyRow<{cpp}> const {owner}_properties[] = {{"]
    for row_owner, name, stored, kind, can_be_set in members.handle_rows():
        if row_owner == OPTIONS[owner]:
            lines.append(property_row(cpp, name, kind, property_doc(rows[stored], said, True), can_be_set))
    if owner == "Graph":
        lines.append(property_row(cpp, "title", "text", "Its name, written above the plot area.", True))
    return lines + ["};"]


def option_names(owner):
    """Each option as (name, type in C++, annotation)."""
    if owner == "Data":
        for name, _ in members.AXES:
            yield name, "AxisHandle", "Axis"
    for color_owner, name, _, _ in members.COLORS:
        if color_owner == owner:
            yield name, "ColorValue", "Color"
    for row_owner, name, _, kind, can_be_set in members.handle_rows():
        if row_owner == owner and can_be_set:
            yield name, members.parameter_type(kind), GIVEN_KINDS[kind]


def option_table(owner):
    lines = [f"OptionRow<{owner}Options> const {owner}_options[] = {{"]
    for name, kind, _ in sorted(option_names(owner), key=lambda row: python_name(row[0])):
        lines.append(f"{{{quoted(python_name(name))}, []({owner}Options& options, py::handle given, Place const& place) "
                     f"{{ options.{name} = read<{kind}>(given, place); }}}},")
    return lines + ["};"]


def signature(method):
    if len(method) > 1:
        return "(self, *args, **kwargs)"
    parts = ["self"] + [p.name if p.default is None else f"{p.name}={p.python_default}" for p in method[0].given]
    if method[0].options:
        parts.append("**options")
    return f"({', '.join(parts)})"


def described(overload):
    parts = [p.name if p.default is None else f"{p.name}={p.python_default}" for p in overload.given]
    return f"{overload.name}({', '.join(parts + (['**options'] if overload.options else []))})"


def method_doc(owner, method, said):
    name = method[0].name
    head = f"{name}{signature(method)}\n--\n\n"
    if owner == "Page" and name in said:
        text = [wrapped(said[name])]
    elif len(method) == 1:
        text = [wrapped(pythonic(method[0].text))]
    else:
        text = [f"{described(overload)}\n{textwrap.indent(wrapped(pythonic(overload.text)), '    ')}" for overload in method]
    if method[0].options:
        text.append(f"Options are the properties of {owner_of_options(method[0])}, by their names.")
    if method[0].results:
        text.append("Returns " + ", ".join(([] if method[0].result == "void" else ["its result"])
                                           + [p.name for p in method[0].results]) + ".")
    return head + "\n\n".join(part for part in text if part)


def owner_of_options(overload):
    short = overload.options.type.split("Options")[0]
    return next(name for name, options in OPTIONS.items() if options == short)


def default_of(p):
    if p.default == "{}" or p.default is None:
        return f"{p.value_type}{{}}"
    return f"{p.value_type}({p.default})"


def columns_of(overload):
    """Places of the parameters that must have one length."""
    if not overload.name.lower().startswith("add"):
        return []
    places = [i for i, p in enumerate(overload.given) if p.kind in (NUMBERS, TEXTS)]
    return places if len(places) > 1 else []


def cell_counts(overload):
    """Which parameters follow from the shape of a matrix, by their places."""
    names = [p.name.lower() for p in overload.given]
    if {"values", "columns", "rows"} <= set(names):
        return {"columns": names.index("columns"), "rows": names.index("rows"), "values": names.index("values")}
    return {}


def argument_lines(overload, cpp, owner):
    lines, arguments, place = [], [], 0
    counts = cell_counts(overload)
    for number, p in enumerate(overload.parameters):
        local = f"a{number}"
        arguments.append(local)
        if p.is_options:
            short = p.type.split("Options")[0]
            lines.append(f"auto const {local} = given.options<{short}Options>({short}_options);")
            continue
        if not p.is_given:
            lines.append(f"{p.value_type} {local}{{}};")
            continue
        which = p.name.lower() if counts and p.name.lower() in ("columns", "rows") else ""
        if which:
            lines.append(f"{p.value_type} const {local} = given.{which}_of({counts['values']}, {place});")
        elif counts and place == counts["values"]:
            lines.append(f"auto const {local} = given.matrix({place});")
        else:
            otherwise = f", {default_of(p)}" if p.default is not None else ""
            constant = "" if p.is_result else "const "
            lines.append(f"auto {constant}{local} = given.take<{p.value_type}>({place}{otherwise});")
        place += 1
    if columns := columns_of(overload):
        lines.append(f"given.need_one_length({{{', '.join(map(str, columns))}}});")
    if overload.name.lower().startswith("add") and owner in ("Page", "DataSet"):
        lines += date_lines(overload, owner)
    return lines, arguments


def date_lines(overload, owner):
    """Dates are for axes of time."""
    for place, p in enumerate(overload.given):
        if p.name.lower() in ("x", "y"):
            data = "o"
            if owner == "Page":
                number = next(i for i, q in enumerate(overload.parameters) if q.name == "DataSet")
                data = f"data_set_of(o, a{number})"
            yield f"if (given.is_date({place})) given.need_time({place}, {data}.{p.name.lower()}_axis());"


def call_of(overload, cpp, owner):
    lines, arguments = argument_lines(overload, cpp, owner)
    call = f"o.{overload.name}({', '.join(arguments)})"
    if overload.group in LONG_GROUPS and owner == "Page":
        lines.append(f"{{ const py::gil_scoped_release others_run; {call}; }}")
    elif overload.result == "void":
        lines.append(f"{call};")
    else:
        lines.append(f"auto const result = {call};")
    back = [] if overload.result == "void" else ["given.made(result)"]
    back += [f"returned(a{i})" for i, p in enumerate(overload.parameters) if p.is_result]
    if not back:
        lines.append("return py::none();")
    else:
        lines.append(f"return {back[0]};" if len(back) == 1 else f"return py::make_tuple({', '.join(back)});")
    parameters = "".join(f"{{{quoted(p.name)}, {'true' if p.default is None and not counted(overload, p) else 'false'}, "
                         f"Kind::{p.kind}}}, " for p in overload.given)
    return (f"{{{{{parameters}}}, {'true' if overload.options else 'false'},\n"
            f" []([[maybe_unused]] {cpp}& o, [[maybe_unused]] Arguments& given) -> py::object {{\n  "
            + "\n  ".join(lines) + "\n }},")


def counted(overload, p):
    return bool(cell_counts(overload)) and p.name.lower() in ("columns", "rows")


def style_method(method, said):
    name, _, parameters = method
    head = f"{name}(self, " + ", ".join(f"{p[0]}={python_style_default(p)}" for p in parameters) + ")\n--\n\n"
    returns = next((p[0] for p in parameters if p[3].startswith("follows_color1")), None)
    doc = wrapped(said[name]) + "".join(f"\n\n{p[0]}: {said[p[4]]}" for p in parameters)
    rows = "".join(f"{{{quoted(p[0])}, false, Kind::{TEXT if p[1] == 'text' else NUMBER}}}, " for p in parameters)
    sets = "".join(f"  if (given.has({i})) all.{p[0]} = given.take<{members.parameter_type(p[1])}>({i});\n"
                   for i, p in enumerate(parameters))
    back = f"returned(static_cast<Color>(all.{returns}))" if returns else "py::none()"
    if returns:
        doc += f"\n\nReturns {returns}."
    return (f"{{{quoted(name)}, {quoted(head + doc)}, {{{{{{{rows}}}, false,\n []({'qvGraph'}& o, Arguments& given) -> py::object {{\n"
            f"  {name}Arguments all;\n{sets}  o.{name}(all);\n  return {back};\n }}}},}}}},")


def python_style_default(p):
    return {"false": "False", "true": "True"}.get(p[2], p[2])


def page_methods():
    """The rows of the table of methods, as the header declares them, and what else a program needs."""
    table = (members.ROOT / "src/control/method_table.cpp").read_text(encoding="utf-8")
    names = re.findall(r'plain_method<[^"]*>\("(\w+)"', table)
    declared = {}
    for d in declarations("qvGraph.h", "qvGraph"):
        if all(p.is_options or p.is_result or p.type in PARAMETERS or p.type.startswith("Checked") for p in d.parameters):
            declared.setdefault(d.name, []).append(d)
    return {name: declared[name] for name in names + FURTHER}


def handle_methods(cpp, owner):
    found = {}
    for d in declarations("handles.h", cpp):
        found.setdefault(d.name, []).append(d)
    found.pop("title", None)
    for name, overloads in found.items():
        # One with options says what the one without does.
        with_options = [d for d in overloads if d.options]
        if with_options and len(overloads) == 2 and not overloads[0].parameters:
            with_options[0].text = overloads[0].text + "; options are set on it."
            found[name] = with_options
    short = OPTIONS[owner]
    options = Parameter(f"{short}Options const&", "options", None)
    found["set"] = [Declaration("void", "set", [options], "Sets what is given, in the order of the reference.", "")]
    return found


def method_table(owner, cpp, methods, said):
    lines = [f"MethodRow<{cpp}> const {owner}_methods[] = {{"]
    for name, method in methods.items():
        calls = "\n".join(call_of(overload, cpp, owner) for overload in method)
        lines.append(f"{{{quoted(name)}, {quoted(method_doc(owner, method, said))}, {{\n{calls}}}}},")
    if owner == "Page":
        lines += [style_method(method, said) for method in members.style_methods()]
    return lines + ["};"]


# Events.

def snake(name):
    return re.sub(r"(?<=[a-z])(?=[A-Z])", "_", name).lower()


def events(said):
    found = [d for d in declarations("EventSink.h", "EventSink") if d.name[0].isupper() and d.name != "EventSink"]
    lines = []
    for d in found:
        takes = ", ".join(f"{p.type} {p.name}" for p in d.parameters)
        names = "".join(f", {p.name}" for p in d.parameters)
        called = f"Called with ({', '.join(p.name for p in d.parameters)})."
        if d.name == "KeyPress":
            called += " What it returns takes the place of KeyAscii; 0 has used the key up."
        lines.append(f"QV_EVENT({d.name}, on_{snake(d.name)}, ({takes}), (Event::{d.name}{names}), "
                     f"{quoted(wrapped(said[d.name]) + chr(10) * 2 + called + ' None for nobody.')})")
    return found, lines


# The stub file.

def stub_signature(d, options):
    parts = ["self"]
    parts += [f"{p.name}: {p.annotation}" + ("" if p.default is None and not counted(d, p) else " | None = ..."
              if p.annotation in ("ArrayLike",) else " = ...") for p in d.given]
    if d.options:
        parts.append("*")
        taken = {p.name for p in d.given}
        parts += [f"{python_name(name)}: {kind} | None = ..."
                  for name, _, kind in option_names(d.options.type.split("Options")[0]) if name not in taken]
    results = ([] if d.result == "void" else [RESULTS.get(d.result) or "int"])
    results += [RESULTS.get(p.value_type) or "int" for p in d.results]
    if d.name in ("find", "find_graph"):
        results[0] += " | None"
    result = "None" if not results else results[0] if len(results) == 1 else f"tuple[{', '.join(results)}]"
    return f"    def {d.name}({', '.join(parts)}) -> {result}: ..."


def stub_methods(methods):
    for method in methods.values():
        for overload in method:
            if len(method) > 1:
                yield "    @overload"
            yield stub_signature(overload, True)


def stub_property(name, kind, can_be_set):
    name = python_name(name)
    yield "    @property"
    yield f"    def {name}(self) -> {KINDS[kind]}: ..."
    if can_be_set:
        yield f"    @{name}.setter"
        yield f"    def {name}(self, value: {GIVEN_KINDS[kind]}) -> None: ..."


def stub_style(method):
    name, _, parameters = method
    takes = ", ".join(f"{p[0]}: {GIVEN_KINDS[p[1]]} = ..." for p in parameters)
    result = "int" if any(p[3].startswith("follows_color1") for p in parameters) else "None"
    return f"    def {name}(self, {takes}) -> {result}: ..."


def stub(found_events):
    text = (members.ROOT / "python/src/_qvgraph.pyi.in").read_text(encoding="utf-8")
    page = ["    @property", "    def Version(self) -> str: ..."]
    for macro, (name, kind, *_) in property_rows():
        page += stub_property(name, kind, macro == "QV_PROPERTY")
    page += stub_methods(page_methods())
    page += [stub_style(method) for method in members.style_methods()]
    for d in found_events:
        takes = ", ".join(RESULTS.get(p.value_type) or "int" for p in d.parameters)
        page.append(f"    on_{snake(d.name)}: Callable[[{takes}], object] | None")
    parts = {"Page": page}
    for cpp, owner in HANDLES.items():
        lines = []
        for row_owner, name, _, kind, can_be_set in members.handle_rows():
            if row_owner == OPTIONS[owner]:
                lines += stub_property(name, kind, can_be_set)
        if owner == "Graph":
            lines += stub_property("title", "text", True)
        parts[owner] = lines + list(stub_methods(handle_methods(cpp, owner)))
    for owner, lines in parts.items():
        text = text.replace(f"    # members of {owner}\n", "\n".join(lines) + "\n")
    return text


def main():
    folder = pathlib.Path(sys.argv[1])
    said = members.sentences()
    made = {"page_properties.inc": page_property_table(said), "page_methods.inc": option_table("Graph")
            + method_table("Page", "qvGraph", page_methods(), said)}
    for cpp, owner in HANDLES.items():
        made[f"{owner}.inc"] = handle_property_table(owner, cpp, said)
        needed = {d.options.type.split("Options")[0] for m in handle_methods(cpp, owner).values() for d in m if d.options}
        for short in sorted(needed):
            made[f"{owner}.inc"] += option_table(short)
        made[f"{owner}.inc"] += method_table(owner, cpp, handle_methods(cpp, owner), said)
    found_events, made["events.inc"] = events(said)
    folder.mkdir(parents=True, exist_ok=True)
    for name, lines in made.items():
        (folder / name).write_text("// Made by scripts/make_python.py.\n" + "\n".join(lines) + "\n", encoding="utf-8")
    (folder / "_qvgraph.pyi").write_text(stub(found_events), encoding="utf-8")


if __name__ == "__main__":
    main()
