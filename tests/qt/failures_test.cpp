// What fails inside an event or a slot is told, and nothing is thrown through Qt.
#include "widget.h"

#include "qvgraph/fault.h"

#include <QtWidgets/QApplication>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

/// Fails wherever it is asked to, even when it is told of a failure.
struct FailingWidget : qt::QvGraphWidget {
    int inputs = 0;

protected:
    bool input(host::Input const&) override {
        ++inputs;
        raise_fault(FaultNumber::SubscriptOutOfRange);
    }
};

struct FailingSink : host::EventSink {
    int told = 0;
    void ErrorMsg(std::string&, std::string&) override {
        ++told;
        throw 7;
    }
};

TEST_CASE("nothing is thrown into Qt, even by a handler of ErrorMsg") {
    FailingWidget widget;
    FailingSink sink;
    draw_page(widget.control());
    widget.control().set_events(&sink);
    QWidget& page = widget.page_view();
    using Act = void (*)(FailingWidget&, QWidget&);
    const Act acts[] = {
        [](FailingWidget&, QWidget& view) {
            QTest::mouseDClick(&view, Qt::RightButton);
            QTest::mouseRelease(&view, Qt::RightButton); // held, it would hold the tests after this one
        },
        [](FailingWidget&, QWidget& view) { QTest::keyClick(&view, Qt::Key_A); },
        [](FailingWidget&, QWidget& view) { QTest::keyClick(&view, Qt::Key_Tab); },
        [](FailingWidget&, QWidget& view) {
            QMouseEvent move(QEvent::MouseMove, QPointF(9, 9), view.mapToGlobal(QPointF(9, 9)), Qt::NoButton,
                             {}, {});
            QApplication::sendEvent(&view, &move);
            QCoreApplication::processEvents(); // which hands the move over
        },
        [](FailingWidget& all, QWidget&) { all.HScroll1().setValue(all.HScroll1().value() == 0 ? 1 : 0); },
        [](FailingWidget&, QWidget& view) {
            QFocusEvent focus(QEvent::FocusIn);
            QApplication::sendEvent(&view, &focus);
        },
    };
    widget.HScroll1().setRange(0, 9);
    for (Act const act : acts) {
        int const inputs = widget.inputs, told = sink.told;
        INFO("act " << &act - acts);
        CHECK_NOTHROW(act(widget, page));
        CHECK(widget.inputs > inputs);
        CHECK(sink.told - told == widget.inputs - inputs);
    }
    widget.control().set_events(nullptr);
}

TEST_CASE("a page has a least size that layouts keep") {
    qt::QvGraphWidget widget;
    CHECK(widget.minimumSizeHint().isValid());
    CHECK(widget.minimumSizeHint().width() < widget.sizeHint().width());
}

} // namespace
} // namespace qv::test
