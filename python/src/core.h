// Core: a page with what every Python object that leads to it shares: the host that holds it, and the lock
// that keeps threads of the interpreter apart.
#pragma once

#include "qvgraph/EventSink.h"
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/page_file.h"

#include <pybind11/pybind11.h>

#include <array>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace qv::python {

namespace py = pybind11;

/// Lives as long as the page object or one of its handles.
struct Core {
    Core(PixelSize picture, double dots_per_inch) : host(picture, dots_per_inch) {}

    qvGraph& control() { return host.control(); }
    /// What texts of files are set in; made on first use.
    std::shared_ptr<raster::FontLibrary> const& fonts();
    /// Throws what an event's handler has thrown meanwhile: it may not pass through the control.
    void raise_what_handlers_threw();

    headless::HeadlessHost host;
    std::recursive_mutex mutex;
    std::optional<std::thread::id>
        window_thread; // the only one that may use the page while a window shows it
    std::exception_ptr thrown_by_handler;

private:
    std::shared_ptr<raster::FontLibrary> fonts_;
};

/// Keeps other threads from a page. To be made while the interpreter's lock is held, which is let go while
/// waiting: who draws may need it for a handler.
class PageLock {
public:
    explicit PageLock(Core& core);

private:
    std::unique_lock<std::recursive_mutex> lock_;
};

/// Throws the Fault of Python.
[[noreturn]] void raise_in_python(Fault const& fault, std::string const& member);

/// Runs what a member does with a page; faults become those of Python.
template <class Action>
auto with_page(Core& core, std::string const& member, Action&& action) {
    PageLock const lock(core);
    try {
        auto result = action();
        core.raise_what_handlers_threw();
        return result;
    } catch (Fault const& fault) {
        core.raise_what_handlers_threw();
        raise_in_python(fault, member);
    }
}

enum class Event : std::uint8_t {
#define QV_EVENT(name, attribute, parameters, call, doc) name,
#include "events.inc"
#undef QV_EVENT
    Count
};

/// The callables that hear the events of a page.
class Events final : public host::EventSink {
public:
    explicit Events(Core& core) : core_(core) {}

#define QV_EVENT(name, attribute, parameters, call, doc)                                                     \
    void name parameters override {                                                                          \
        raise call;                                                                                          \
    }
#include "events.inc"
#undef QV_EVENT

    py::object& handler(Event event) {
        return handlers_[static_cast<std::size_t>(event)];
    }
    auto& handlers() {
        return handlers_;
    }

private:
    template <class... Values>
    void raise(Event event, Values&... values) {
        // Without the interpreter's lock: handlers change under the page's lock alone.
        bool const is_heard = static_cast<bool>(handler(event));
        if (!is_heard && event != Event::ErrorMsg) return;
        const py::gil_scoped_acquire interpreter;
        try {
            if (is_heard)
                take_answer(event, py::object(handler(event))(values...), values...);
            else
                warn(values...);
        } catch (py::error_already_set&) {
            if (!core_.thrown_by_handler) core_.thrown_by_handler = std::current_exception();
        }
    }

    /// The key that a handler of KeyPress leaves.
    template <class... Values>
    static void take_answer(Event event, py::object const& answer, Values&... values) {
        if constexpr (sizeof...(Values) == 3)
            if (event == Event::KeyPress && !answer.is_none())
                std::get<0>(std::tie(values...)) = answer.cast<std::int16_t>();
    }

    // A failure that nobody hears of would leave a person wondering.
    template <class... Values>
    static void warn(Values&... values) {
        if constexpr (sizeof...(Values) == 2)
            tell(py::str(py::cast(std::get<0>(std::tie(values...)))),
                 py::str(py::cast(std::get<1>(std::tie(values...)))));
    }
    static void tell(py::str const& source, py::str const& description);

    Core& core_;
    std::array<py::object, static_cast<std::size_t>(Event::Count)> handlers_;
};

/// The page as Python has it.
struct Page {
    Page(int width, int height, std::optional<std::string> const& look, double dots_per_inch);
    ~Page();
    Page(Page const&) = delete;
    Page& operator=(Page const&) = delete;

    std::shared_ptr<Core> core;
    Events events;
};

/// A handle as Python has it; it keeps its page.
template <class Handle>
struct Held {
    std::shared_ptr<Core> core;
    Handle handle;
};

// What a member acts on, told by the type of its object.
inline qvGraph& owner_of(Page& page) {
    return page.core->control();
}
template <class Handle>
Handle& owner_of(Held<Handle>& held) {
    return held.handle;
}

} // namespace qv::python
