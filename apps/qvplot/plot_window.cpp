#include "qvplot/plot_window.h"

#include "qvgraph/ChildControls.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <QtGui/QShortcut>

#include <chrono>
#include <cmath>
#include <utility>

namespace qv::plot {
namespace {

struct Key {
    char const* keys;
    char const* entry; // of the page's menu
};
constexpr Key keys[] = {{"Ctrl+C", "Copy"},     {"Ctrl+S", "SaveAs"},         {"Ctrl+P", "Print"},
                        {"Ctrl+Z", "UndoZoom"}, {"Ctrl+0", "ShowEverything"}, {"F1", "Gestures"}};

std::string title_of(PlotOptions const& options) {
    if (options.files.empty())
        return options.functions.empty() ? "qvplot" : options.functions.front() + " - qvplot";
    std::string names;
    for (auto const& file : options.files)
        names += (names.empty() ? "" : ", ") + (file == "-" ? "standard input" : file.filename().string());
    return names + " - qvplot";
}

} // namespace

PlotWindow::PlotWindow(PlotData series, PlotOptions const& options)
    : options_(options), page_(control(), std::move(series), options,
                               options.watch ? AfterDrawing::Keep : AfterDrawing::GiveUp) {
    prepare(options);
    if (options.watch) watch();
}

PlotWindow::PlotWindow(PlotOptions const& options)
    : options_(options), growing_(std::make_unique<GrowingSeries>(options)),
      page_(control(), growing_->data(), options) {
    constexpr std::chrono::milliseconds between_redraws{16}; // 60 a second
    prepare(options);
    connect(&timer_, &QTimer::timeout, this, [this] { read_more(); });
    timer_.start(between_redraws);
}

void PlotWindow::prepare(PlotOptions const& options) {
    setWindowTitle(QString::fromStdString(title_of(options)));
    // The picture has the size asked for; scroll bars lie beside it.
    auto const bar =
        static_cast<int>(std::lround(control().child_controls().VScroll1.Width * 96 / twips_per_inch));
    resize(options.size.width + bar, options.size.height + bar);
    connect(this, &QvGraphWidget::ErrorMsg, [](QString const& source, QString const& description) {
        tell(source.toStdString() + ": " + description.toStdString());
    });
    control().GesturePointTooltip(true);
    add_keys();
}

void PlotWindow::add_keys() {
    for (Key const& key : keys)
        connect(new QShortcut(QKeySequence(QLatin1String(key.keys)), this), &QShortcut::activated, this,
                [this, entry = QString::fromLatin1(key.entry)] { do_menu_entry(entry); });
    for (char const* const close_keys : {"Ctrl+W", "Ctrl+Q"})
        connect(new QShortcut(QKeySequence(QLatin1String(close_keys)), this), &QShortcut::activated, this,
                [this] { close(); });
}

// Some programs write a file in pieces, others put a new one in its place, which has to be watched anew.
void PlotWindow::watch() {
    constexpr std::chrono::milliseconds until_whole{100};
    watcher_ = std::make_unique<QFileSystemWatcher>();
    for (auto const& file : options_.files) watcher_->addPath(QString::fromStdString(file.string()));
    timer_.setSingleShot(true);
    timer_.setInterval(until_whole);
    connect(watcher_.get(), &QFileSystemWatcher::fileChanged, this, [this] { timer_.start(); });
    connect(&timer_, &QTimer::timeout, this, [this] { read_again(); });
}

// What cannot be read now leaves the page as it is.
void PlotWindow::read_again() {
    for (auto const& file : options_.files) watcher_->addPath(QString::fromStdString(file.string()));
    reported([this] {
        page_.replace(read_data(options_));
        return success;
    });
}

void PlotWindow::read_more() {
    if (!drawn_) return;
    constexpr std::chrono::milliseconds longest{10};
    const FollowedInput input(options_.files.front().string());
    auto const end = std::chrono::steady_clock::now() + longest;
    bool any = false, ended = false;
    int const status = reported([&] {
        while (!ended && std::chrono::steady_clock::now() < end && input.wait(std::chrono::milliseconds(0))) {
            if (growing_->read()) {
                page_.append(growing_->data().series);
                any = true;
            } else {
                ended = true;
            }
        }
        if (ended && input.has_end()) {
            growing_->finish();
            page_.append(growing_->data().series);
            timer_.stop();
            any = true;
        }
        return success;
    });
    if (status != success) timer_.stop();
    if (any) control().Refresh();
}

void PlotWindow::resizeEvent(QResizeEvent* event) {
    QvGraphWidget::resizeEvent(event);
    if (std::exchange(drawn_, true))
        page_.follow();
    else
        page_.draw();
}

// Zooming raises no event of the control, but all that a person does comes through here.
bool PlotWindow::input(host::Input const& input) {
    bool const used_up = QvGraphWidget::input(input);
    if (drawn_) page_.follow();
    return used_up;
}

} // namespace qv::plot
