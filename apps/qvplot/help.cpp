#include "qvplot/help.h"

#include "qvplot/options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>

namespace qv::plot {
namespace {

struct Topic {
    std::string_view name; // the group of options, or a topic with a text alone
    std::string_view about;
    std::string_view text = "";
};

constexpr std::string_view formula_text =
    "Formulas know x, numbers, + - * / ^, and functions such as sin, exp, sqr and ln.\n"
    "  qvplot --function \"sin(x)/x\" --x-range -10:10\n"
    "  qvplot eval \"x^2 + f(x)\" --define \"f(a) = a/2\" --x 0:10:0.5    prints a table\n";
constexpr std::string_view status_text = "0  all is well\n1  some value of a formula fails\n2  the command "
                                         "or a file is wrong, which one line on standard error tells;\n"
                                         "   no file was touched\n";
constexpr std::string_view data_text =
    "Files are tables of text with whatever separator, JSON lines or .npy arrays, packed by gzip or zstd or "
    "not. What\n"
    "each column was taken for, --explain prints. What is left out is counted on standard error.\n\n";

constexpr std::array topics{
    Topic{"columns", "which columns and functions are drawn"},
    Topic{"data", "how files are read", data_text},
    Topic{"looks", "lines, bars, areas, histograms, heat maps; colours and fonts"},
    Topic{"styles", "the words of --style"},
    Topic{"axes", "ranges, logarithms, titles, reference lines"},
    Topic{"output", "files, sizes, printing, files of options"},
    Topic{"window", "the window, following data as they come"},
    Topic{"formulas", "functions and qvplot eval", formula_text},
    Topic{"status", "what the exit status says", status_text},
};

std::string usage_of(CLI::Option const& option) {
    std::string name = option.get_positional() ? option.get_name(true) : "--" + option.get_lnames().front();
    if (option.get_positional()) return option.get_type_name();
    return option.get_type_name().empty() ? name : name + " " + option.get_type_name();
}

void write_option(CLI::Option const& option, std::ostream& out) {
    constexpr std::size_t width = 26, line = 92;
    std::string text = "  " + usage_of(option);
    text += text.size() < width ? std::string(width - text.size(), ' ') : "\n" + std::string(width, ' ');
    std::string words = option.get_description();
    // The description goes on below its own beginning.
    while (words.size() > line) {
        auto const blank = words.rfind(' ', line);
        if (blank == std::string::npos) break;
        text += words.substr(0, blank) + "\n" + std::string(width, ' ');
        words.erase(0, blank + 1);
    }
    out << text << words << "\n";
}

std::vector<CLI::Option const*> options_of(CLI::App const& app, std::string_view group) {
    return app.get_options([&](CLI::Option const* option) { return option->get_group() == group; });
}

void write_topic(CLI::App const& app, Topic const& topic, std::ostream& out) {
    out << "qvplot, " << topic.about << "\n\n" << topic.text;
    if (topic.name == "styles") {
        out << "--style \"COLUMN:WORD,WORD\", of words";
        for (std::string const& word : style_words()) out << " " << word;
        out << ", width=PIXELS and colours: names such as blue, or #RRGGBB.\n";
    }
    for (CLI::Option const* option : options_of(app, topic.name)) write_option(*option, out);
}

void write_overview(std::ostream& out) {
    out << "Draws columns of files, and functions, as a graph: in a window, or into a file.\n\n"
           "  qvplot data.csv                          the first column along the page, all others over it\n"
           "  qvplot data.csv --x date --y temp,wind --out page.png\n"
           "  some-program | qvplot - --out - --format svg > page.svg\n"
           "  qvplot --function \"sin(x)/x\" --x-range -10:10\n"
           "  qvplot eval \"x^2\" --x 0:10:0.5          a table of x and values\n\n"
           "qvplot --help TOPIC tells more:\n";
    for (Topic const& topic : topics)
        out << "  " << topic.name << std::string(12 - topic.name.size(), ' ') << topic.about << "\n";
    out << "  all         everything\n\nqvplot --version; qvplot --completion bash|zsh|fish\n";
}

// Options with a dash in front, and what they may be given: words, files, or anything.
struct Completed {
    std::string name;
    std::string about;
    std::vector<std::string> words;
    bool takes_value = false;
    bool takes_file = false;
};

std::vector<std::string> words_in(std::string const& type) {
    std::vector<std::string> words;
    if (type.find('|') == std::string::npos) return words;
    for (std::size_t begin = 0; begin <= type.size();) {
        std::size_t const end = std::min(type.find('|', begin), type.size());
        words.push_back(type.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

std::vector<Completed> completed_options(CLI::App const& app) {
    std::vector<Completed> all;
    for (CLI::Option const* option : app.get_options()) {
        if (option->get_lnames().empty()) continue;
        const std::string type = option->get_type_name();
        all.push_back({option->get_lnames().front(), option->get_description(), words_in(type),
                       option->get_items_expected_max() > 0 && !type.empty(), type == "FILE"});
    }
    std::vector<std::string> names{"all"};
    for (Topic const& topic : topics) names.emplace_back(topic.name);
    all.push_back({"help", "how to use it", names, true});
    all.push_back({"version", "the version", {}});
    all.push_back({"completion", "the script for a shell", {"bash", "zsh", "fish"}, true});
    return all;
}

std::string joined(std::vector<std::string> const& words) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string quoted(std::string const& text) {
    std::string result;
    for (char const c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return "'" + result + "'";
}

void write_bash(std::vector<Completed> const& options, std::ostream& out) {
    out << "# Completes command lines of qvplot in bash; written by qvplot --completion bash.\n"
           "_qvplot() {\n  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n  case "
           "$before in\n";
    for (Completed const& option : options) {
        if (option.takes_file) {
            out << "    --" << option.name << ") COMPREPLY=($(compgen -f -- \"$word\")); return ;;\n";
        } else if (!option.words.empty()) {
            out << "    --" << option.name << ") COMPREPLY=($(compgen -W \"" << joined(option.words)
                << "\" -- \"$word\")); return ;;\n";
        } else if (option.takes_value) {
            out << "    --" << option.name << ") COMPREPLY=(); return ;;\n";
        }
    }
    out << "  esac\n  case $word in\n    -*) COMPREPLY=($(compgen -W \"";
    for (Completed const& option : options) out << "--" << option.name << " ";
    out << "\" -- \"$word\")) ;;\n    *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n  esac\n}\n"
           "complete -o filenames -F _qvplot qvplot\n";
}

// Colons and brackets have a meaning of their own in zsh's descriptions.
std::string for_zsh(std::string_view text) {
    std::string result;
    for (char const c : text) {
        if (c == ':' || c == '[' || c == ']' || c == '\\') result += '\\';
        result += c;
    }
    return result;
}

void write_zsh(std::vector<Completed> const& options, std::ostream& out) {
    out << "#compdef qvplot\n# Completes command lines of qvplot in zsh; written by qvplot --completion "
           "zsh.\n_arguments \\\n";
    for (Completed const& option : options) {
        std::string row = "*--" + option.name + "[" + for_zsh(option.about) + "]";
        if (option.takes_file)
            row += ":file:_files";
        else if (!option.words.empty())
            row += ":value:(" + joined(option.words) + ")";
        else if (option.takes_value)
            row += ":value: ";
        out << "  " << quoted(row) << " \\\n";
    }
    out << "  '*:file:_files'\n";
}

void write_fish(std::vector<Completed> const& options, std::ostream& out) {
    out << "# Completes command lines of qvplot in fish; written by qvplot --completion fish.\n";
    for (Completed const& option : options) {
        out << "complete -c qvplot -l " << option.name;
        if (option.takes_file)
            out << " -r";
        else if (!option.words.empty())
            out << " -x -a " << quoted(joined(option.words));
        else if (option.takes_value)
            out << " -x";
        out << " -d " << quoted(option.about) << "\n";
    }
}

} // namespace

bool write_help(CLI::App const& app, std::string const& topic, std::ostream& out) {
    if (topic.empty()) {
        write_overview(out);
        return true;
    }
    bool found = false;
    for (Topic const& row : topics) {
        if (row.name != topic && topic != "all") continue;
        if (found) out << "\n";
        write_topic(app, row, out);
        found = true;
    }
    return found;
}

bool write_completion(CLI::App const& app, std::string const& shell, std::ostream& out) {
    const std::vector<Completed> options = completed_options(app);
    if (shell == "bash")
        write_bash(options, out);
    else if (shell == "zsh")
        write_zsh(options, out);
    else if (shell == "fish")
        write_fish(options, out);
    else
        return false;
    return true;
}

} // namespace qv::plot
