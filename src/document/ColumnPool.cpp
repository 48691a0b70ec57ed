#include "document/ColumnPool.h"

namespace qv::document {

ColumnPool::Column ColumnPool::take() {
    kept_.reserve(most_kept); // so that keeping one cannot fail
    if (kept_.empty()) return Column(new double[column_size], Return{this});
    std::unique_ptr<double[]> column = std::move(kept_.back());
    kept_.pop_back();
    return Column(column.release(), Return{this});
}

void ColumnPool::keep(double* column) {
    std::unique_ptr<double[]> owned(column);
    if (kept_.size() < most_kept) kept_.push_back(std::move(owned));
}

} // namespace qv::document
