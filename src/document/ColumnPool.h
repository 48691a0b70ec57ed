// ColumnPool: keeps the memory of dropped points for the next ones. A live chart drops as many points as it
// adds, and a page is often emptied only to be filled again; neither should fetch every block anew from the
// operating system.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace qv::document {

class ColumnPool {
public:
    static constexpr std::size_t column_size = 8192; // values; stays below what allocators map one by one
    static constexpr std::size_t most_kept = 512;    // columns, 32 MiB

    /// Returns a column to its pool, or frees one that has none.
    struct Return {
        ColumnPool* pool = nullptr;
        void operator()(double* column) const {
            if (pool)
                pool->keep(column);
            else
                delete[] column;
        }
    };
    using Column = std::unique_ptr<double[], Return>;

    /// `column_size` values, not initialised. The pool has to outlive the column.
    Column take();

private:
    void keep(double* column);

    std::vector<std::unique_ptr<double[]>> kept_;
};

} // namespace qv::document
