#include "qvplot/report.h"

#include "qvplot/formula.h"

#include <iostream>
#include <new>

namespace qv::plot {

void tell(std::string const& line) {
    std::cerr << "qvplot: " << line << "\n";
}

int reported(std::function<int()> const& body) {
    try {
        return body();
    } catch (std::bad_alloc const&) {
        tell("not enough memory");
    } catch (FormulaError const& error) {
        std::cerr << error.what() << "\n"; // the caret stands under its place
    } catch (std::exception const& error) {
        tell(error.what());
    }
    return failure;
}

void FirstError::ErrorMsg(std::string& Source, std::string& Description) {
    if (text_.empty()) text_ = Source + ": " + Description;
}

void FirstError::raise() const {
    if (!text_.empty()) throw PlotError(text_);
}

} // namespace qv::plot
