// TableError: what keeps a file from being read.
#pragma once

#include <stdexcept>

namespace qv::table {

/// A file that cannot be read as asked; the text is one line that names the file and what to do.
struct TableError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace qv::table
