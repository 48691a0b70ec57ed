#include "qvplot/command_line.h"

#include "qvplot/help.h"
#include "qvplot/report.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>

namespace qv::plot {
namespace {

/// --help TOPIC, --version and --completion SHELL stand alone, wherever they are.
std::optional<int> answered(CLI::App const& app, std::vector<std::string> const& arguments) {
    auto const value_of = [&](std::string const& name) -> std::optional<std::string> {
        for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
            if (arguments[i].starts_with(name + "=")) return arguments[i].substr(name.size() + 1);
            if (arguments[i] != name) continue;
            bool const has_value = i + 1 < arguments.size() && !arguments[i + 1].starts_with("-");
            return has_value ? arguments[i + 1] : "";
        }
        return std::nullopt;
    };
    auto help = value_of("--help");
    if (!help) help = value_of("-h");
    if (help) {
        if (write_help(app, *help, std::cout)) return success;
        tell("--help: there is no topic \"" + *help + "\"; qvplot --help lists them");
        return failure;
    }
    if (value_of("--version")) {
        std::cout << "qvplot " QV_VERSION "\n";
        return success;
    }
    auto const shell = value_of("--completion");
    if (!shell) return std::nullopt;
    if (write_completion(app, *shell, std::cout)) return success;
    tell("--completion: \"" + *shell + "\" is none of bash, zsh, fish");
    return failure;
}

} // namespace

Command read_command(int argc, char const* const* argv) {
    Command command;
    CLI::App app("Draws columns of files, and functions, as a graph", "qvplot");
    app.set_help_flag();
    add_plot_options(app, command.plot);
    CLI::App& eval =
        *app.add_subcommand("eval", "Evaluates a formula and prints a table of x and its values");
    eval.set_help_flag("-h,--help", "how to use it");
    add_eval_options(eval, command.eval);
    try {
        std::vector<std::string> arguments{argv + std::min(argc, 1), argv + argc};
        bool const is_eval = !arguments.empty() && arguments[0] == eval.get_name();
        if (!is_eval) command.status = answered(app, arguments);
        if (command.status) return command;
        arguments = with_formula_last(eval, std::move(arguments));
        std::ranges::reverse(arguments); // as the parser takes them
        app.parse(std::move(arguments));
        command.is_eval = eval.parsed();
        if (!command.is_eval) check_options(command.plot);
    } catch (CLI::Success const& help) {
        command.status = app.exit(help);
    } catch (std::runtime_error const& error) {
        // A command line that the parser does not take, or a PlotError or TableError about one.
        const std::string text = error.what();
        bool const by_parser = dynamic_cast<CLI::Error const*>(&error) != nullptr;
        tell(text.substr(0, text.find('\n')) + (by_parser ? "; qvplot --help shows the options" : ""));
        command.status = failure;
    }
    return command;
}

} // namespace qv::plot
