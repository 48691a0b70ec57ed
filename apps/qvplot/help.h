// Help by topic, and the scripts by which shells complete a command line.
#pragma once

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace qv::plot {

/// Writes the help on a topic; without one how to begin, and which topics there are. False for a topic that
/// is none.
bool write_help(CLI::App const& app, std::string const& topic, std::ostream& out);

/// Writes the script for bash, zsh or fish; false for another shell.
bool write_completion(CLI::App const& app, std::string const& shell, std::ostream& out);

} // namespace qv::plot
