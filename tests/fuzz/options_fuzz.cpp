// Hostile command lines: a line is one argument. They are read as the program reads them, help and shells'
// completion too, and only what they say together is kept to its ranges.
#include "qvplot/command_line.h"
#include "qvplot/report.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <vector>

namespace {

using namespace qv::plot;

void require(bool holds) {
    if (!holds) std::abort();
}

void check(PlotOptions const& options) {
    require(options.size.width >= 64 && options.size.width <= 8192);
    require(options.size.height >= 64 && options.size.height <= 8192);
    require(options.dpi >= 20 && options.dpi <= 1200);
    require(options.latest >= 0);
    require(!options.panels || *options.panels >= 1);
    for (auto const* range : {&options.x_range, &options.y_range, &options.y2_range})
        require(!*range || (*range)->from < (*range)->to);
}

// Options may name files of options, which are no matter of this.
bool reads_files(std::string const& argument) {
    return argument.find("--opt") != std::string::npos;
}

void run(std::vector<std::string> const& arguments) {
    std::vector<char const*> values{"qvplot"};
    for (std::string const& argument : arguments) {
        if (reads_files(argument)) return;
        values.push_back(argument.c_str());
    }
    std::ostringstream told, answered;
    std::streambuf* const errors = std::cerr.rdbuf(told.rdbuf());
    std::streambuf* const output = std::cout.rdbuf(answered.rdbuf());
    const Command command = read_command(static_cast<int>(values.size()), values.data());
    std::cerr.rdbuf(errors);
    std::cout.rdbuf(output);
    const std::string text = told.str();
    // What is wrong is one line.
    if (command.status == failure)
        require(text.starts_with("qvplot: ") && text.find('\n') == text.size() - 1);
    if (!command.status && !command.is_eval) check(command.plot);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::vector<std::string> arguments;
    std::string_view text(reinterpret_cast<char const*>(data), size);
    while (!text.empty() && arguments.size() < 40) {
        auto const end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        if (line.find('\0') != std::string_view::npos) return 0;
        arguments.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    run(arguments);
    return 0;
}
