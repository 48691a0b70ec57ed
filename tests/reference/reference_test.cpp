// docs/reference.md, made of the tables of members and of docs/members.txt, and compared with what is there.
#include "control/members_by_name.h"
#include "qvgraph/HeadlessHost.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

using namespace qv;

namespace {

std::filesystem::path source_folder() {
    char const* const source = std::getenv("QV_SOURCE_DIR");
    return source ? source : ".";
}

std::string read_file(std::filesystem::path const& file) {
    return test::content_of(source_folder() / file);
}

struct Description {
    char mark = ' '; // '+' ours, '-' without visible effect
    std::string sentence;
};
using Section = std::map<std::string, Description, std::less<>>;

std::map<std::string, Section> read_descriptions() {
    std::map<std::string, Section> sections;
    std::istringstream lines(read_file("docs/members.txt"));
    std::string line, section;
    while (std::getline(lines, line)) {
        if (line.starts_with("[")) section = line.substr(1, line.find(']') - 1);
        std::smatch parts;
        if (!std::regex_match(line, parts, std::regex(R"(([+-]?)(\w+): (.+))"))) continue;
        sections[section][parts[2]] = {parts[1].length() > 0 ? *parts[1].first : ' ', parts[3]};
    }
    return sections;
}

std::set<std::string> names_of(Section const& section) {
    std::set<std::string> names;
    for (auto const& [name, description] : section) names.insert(name);
    return names;
}

/// "" when the sets are equal, else what is missing and what is too much.
std::string difference(std::set<std::string> const& described, std::set<std::string> const& existing) {
    std::string text;
    for (std::string const& name : existing)
        if (!described.contains(name)) text += name + " has no sentence; ";
    for (std::string const& name : described)
        if (!existing.contains(name)) text += name + " does not exist; ";
    return text;
}

/// Names that stand before a parenthesis, and of references to fields, in the public part of a class.
std::set<std::string> members_of(std::string const& header, std::string const& class_start) {
    std::string text = read_file(header);
    text = text.substr(text.find(class_start));
    text = text.substr(0, text.find("private:"));
    std::set<std::string> names;
    std::regex const member(R"(\n    (?:\w[\w:<>&\*, ]* \*?&?)(\w+)\(|\n    [\w:]+& (\w+);)");
    for (std::sregex_iterator i(text.begin(), text.end(), member), end; i != end; ++i)
        names.insert((*i)[1].matched ? (*i)[1] : (*i)[2]);
    return names;
}

std::string shown(Variant const& value) {
    if (auto const* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
    if (auto const* text = std::get_if<std::string>(&value))
        return text->empty() ? "\"\"" : "\"" + *text + "\"";
    if (std::holds_alternative<NumberList>(value)) return "{}";
    return text_of(value);
}

std::string colored(Variant const& value) {
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << static_cast<std::uint32_t>(number_of<std::int32_t>(value));
    return text.str();
}

std::string escaped(std::string text) {
    return std::regex_replace(text, std::regex(R"(\|)"), R"(\|)");
}

std::string sentence(Section const& section, std::string_view name) {
    auto const found = section.find(name);
    if (found == section.end()) return "";
    std::string text = escaped(found->second.sentence);
    if (found->second.mark == '+') text += " *(ours)*";
    if (found->second.mark == '-') text += " *(no visible effect)*";
    return text;
}

std::string properties(Section const& section) {
    // As a new graph with a new data set has them.
    headless::HeadlessHost host({100, 100});
    host.control().NewGraph("");
    host.control().NewDataSet("");
    std::string text = "| property | of | kind | default | |\n|---|---|---|---|---|\n";
    for (auto const& row : control::property_table()) {
        Variant const value = row.get(host.control());
        text += "| `" + std::string(row.name) + "` | " + std::string(row.target) + " | "
                + std::string(row.kind) + (row.let ? "" : ", read only") + " | "
                + escaped(row.kind == "color" ? colored(value) : shown(value)) + " | "
                + sentence(section, row.name) + " |\n";
    }
    return text;
}

std::string methods(Section const& section) {
    std::string text;
    for (auto const& row : control::method_table()) {
        text += "* `" + std::string(row.name) + "(";
        char const* separator = "";
        for (auto const& parameter : row.parameters) {
            text += separator + std::string(parameter.by_reference ? "&" : "") + std::string(parameter.name);
            if (!parameter.required) text += " = " + shown(parameter.default_value);
            separator = ", ";
        }
        text += ")`: " + sentence(section, row.name) + "\n";
    }
    return text;
}

std::string plain_list(Section const& section) {
    std::string text;
    for (auto const& [name, description] : section)
        text += "* `" + name + "`: " + sentence(section, name) + "\n";
    return text;
}

std::string reference(std::map<std::string, Section> const& sections) {
    return "# Reference\n\n"
           "Every member of the control `qvGraph`, its events, and the formula engine. This page is made "
           "from the\n"
           "control's own tables; [members.txt](members.txt) holds the sentences.\n\n"
           "A property is read as `page.Name()` and set as `page.Name(value)`, or by name with `Get` and "
           "`Let`.\n"
           "It belongs to the selected axis, the current graph, the page, the selected data set or the "
           "control;\n"
           "without such a one it is fault 9. A number that does not fit the kind, or the field behind it, "
           "is\n"
           "fault 6; by name, a text where a number belongs (or the reverse) is fault 13. Colours are "
           "0xBBGGRR, or\n"
           "0x80000000 + n for system colour n. Lengths are millimetres, pen widths pixels. Nothing is "
           "drawn\n"
           "before `Refresh`.\n\n## Properties\n\n"
           + properties(sections.at("properties"))
           + "\n## Methods, also by name\n\n\"&\" marks what a method writes into, \"=\" what may be left "
             "out. In a "
             "style method -1, or an empty text,\nmostly leaves things as they are. Methods report failures "
             "through `ErrorMsg`.\n\n"
           + methods(sections.at("methods")) + "\n## Members of C++ alone\n\n"
           + plain_list(sections.at("members of C++")) + "\n## Events\n\n" + plain_list(sections.at("events"))
           + "\n## qvExpression\n\nThe language is told in [expressions.md](expressions.md). A `qvVariable` "
             "has a "
             "`Name` and a `Value`.\n\n"
           + plain_list(sections.at("members of qvExpression"));
}

} // namespace

TEST_CASE("every member has its sentence in docs/members.txt, and none is invented") {
    auto const sections = read_descriptions();
    std::set<std::string> property_names, method_names;
    for (auto const& row : control::property_table()) property_names.emplace(row.name);
    for (auto const& row : control::method_table()) method_names.emplace(row.name);
    CHECK(difference(names_of(sections.at("properties")), property_names) == "");
    CHECK(difference(names_of(sections.at("methods")), method_names) == "");
    std::set<std::string> rest = members_of("include/qvgraph/qvGraph.h", "class QV_EXPORT qvGraph {");
    for (std::string const& name : method_names) rest.erase(name);
    for (char const* macro_line : {"qvGraph", "method", "name", "Version"}) rest.erase(macro_line);
    CHECK(difference(names_of(sections.at("members of C++")), rest) == "");
    auto events = members_of("include/qvgraph/EventSink.h", "class QV_EXPORT EventSink {");
    events.erase("EventSink");
    CHECK(difference(names_of(sections.at("events")), events) == "");
    auto engine = members_of("include/qvgraph/qvExpression.h", "class QV_EXPORT qvExpression {");
    engine.erase("qvExpression");
    CHECK(difference(names_of(sections.at("members of qvExpression")), engine) == "");
}

TEST_CASE("docs/reference.md is up to date") {
    std::string const made = reference(read_descriptions());
    bool const same = made == read_file("docs/reference.md");
    if (!same) std::ofstream("reference.md") << made;
    INFO("copy ", std::filesystem::absolute("reference.md").string(), " to docs/reference.md");
    CHECK(same);
}
