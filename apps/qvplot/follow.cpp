#include "qvplot/follow.h"

#include "qvplot/page_writer.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <thread>

namespace qv::plot {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds between_pictures{1000};
constexpr milliseconds between_looks{100};

volatile std::sig_atomic_t interrupted = 0;

void end_on_signals() {
    for (int const number : {SIGINT, SIGTERM}) std::signal(number, [](int) { interrupted = 1; });
}

// The files' times of writing; of one that is not there, now and then, none.
std::map<std::string, std::filesystem::file_time_type> times_of(PlotOptions const& options) {
    std::map<std::string, std::filesystem::file_time_type> times;
    for (auto const& file : options.files) {
        std::error_code none;
        auto const time = std::filesystem::last_write_time(file, none);
        if (!none) times[file.string()] = time;
    }
    return times;
}

} // namespace

bool FollowedInput::has_end() const {
    struct stat about {};
    return file_ == "-" || (stat(file_.c_str(), &about) == 0 && !S_ISREG(about.st_mode));
}

bool FollowedInput::wait(milliseconds longest) const {
    if (file_ == "-") {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        return poll(&input, 1, static_cast<int>(longest.count())) > 0;
    }
    if (longest.count() > 0) std::this_thread::sleep_for(std::min(longest, between_looks));
    return true;
}

bool FollowedInput::wait_for_content() const {
    struct stat about {};
    while (file_ != "-" && stat(file_.c_str(), &about) == 0 && S_ISREG(about.st_mode) && about.st_size == 0) {
        if (interrupted) return false;
        std::this_thread::sleep_for(between_looks);
    }
    return true;
}

int follow_into_file(PlotOptions const& options) {
    end_on_signals();
    const FollowedInput input(options.files.front().string());
    if (!input.wait_for_content()) return success;
    GrowingSeries series(options);
    PageWriter writer(options);
    FirstError errors;
    writer.control().set_events(&errors);
    PlotPage page(writer.control(), series.data(), options);
    page.draw();
    auto const write = [&] {
        writer.control().Refresh();
        errors.raise();
        writer.write();
    };
    bool changed = true, any_written = false;
    auto next = Clock::now();
    while (!interrupted) {
        auto const now = Clock::now();
        if (changed && now >= next && any_written) {
            write();
            changed = false;
            next = now + between_pictures;
        }
        auto const left = changed ? std::chrono::duration_cast<milliseconds>(next - now) : between_pictures;
        if (!input.wait(std::max(left, milliseconds(0)))) continue;
        if (series.read()) {
            page.append(series.data().series);
            changed = true;
            if (!any_written) next = now; // the first picture as soon as there is one
            any_written = true;
        } else if (input.has_end()) {
            break;
        }
    }
    series.finish();
    page.append(series.data().series);
    write();
    writer.control().set_events(nullptr);
    return success;
}

int watch_into_file(PlotOptions const& options) {
    end_on_signals();
    auto drawn = times_of(options);
    write_page(read_data(options), options, AfterDrawing::GiveUp);
    while (!interrupted) {
        std::this_thread::sleep_for(between_looks);
        auto const now = times_of(options);
        if (now == drawn || now.size() < options.files.size()) continue;
        drawn = now;
        // A file that is half written may be none; the next change will tell.
        reported([&] {
            write_page(read_data(options), options, AfterDrawing::GiveUp);
            return success;
        });
    }
    return success;
}

} // namespace qv::plot
