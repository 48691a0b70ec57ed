"""Pages with their members by the names of the reference, handles, events and failures."""
import ctypes
import gc
import os
import pathlib
import re
import weakref

import pytest

import qvgraph

SOURCE = pathlib.Path(os.environ["QV_SOURCE_DIR"])


def test_every_property_and_method_of_the_reference_is_there_with_its_sentence():
    text = (SOURCE / "docs/members.txt").read_text(encoding="utf-8")
    section = ""
    for line in text.splitlines():
        section = line if line.startswith("[") else section
        member = re.match(r"[+-]?(\w+): (.+)", line)
        if member and section in ("[properties]", "[methods]"):
            doc = " ".join(getattr(qvgraph.Page, member.group(1)).__doc__.split())
            assert " ".join(member.group(2).split()) in doc, member.group(1)


def test_help_tells_unit_range_and_fault():
    doc = " ".join(qvgraph.Page.AxisValue1.__doc__.split())
    assert "Unit: that of the axis's values" in doc and "Range: any, in double precision" in doc
    assert "Of the selected axis; Fault 9 without it" in doc
    assert "Unit: millimetres" in qvgraph.Page.AxisTickLength.__doc__
    assert "Range: 0 to 255; Fault 6" in " ".join(qvgraph.Page.AxisThickness.__doc__.split())


def test_members_by_their_classic_names():
    page = qvgraph.Page(300, 200, look="classic")
    page.NewGraph("first", x1=0, x2=10, y1=-1, y2=1)
    assert page.LookName == "classic" and page.GetAxisRange() == (0, 10)
    page.SelectYaxis()
    page.AxisValue2 = 2
    assert page.GetAxisRange() == (-1, 2)
    assert page.GetGraphNames()[0][1] == "first" and page.GetGraphNames()[1] == 1
    page.NewDataSet("line")
    page.AddDataPoint(1, 2, E=0.5, DataID="a")
    assert page.SymbolStyle(Symbol=3, Color1="#0000FF") == page.DataSymbolColor == qvgraph.rgb(0, 0, 255)
    assert page.graphs()[0].data_sets()[0].points().error.tolist() == [0.5]


def test_handles_take_options_as_keywords_and_keep_their_page():
    graph = qvgraph.Page(300, 200).graph("Weather", left=10)
    axis = graph.add_y_axis(title="mm", far_side=True)
    rain = graph.bars("rain", axis=axis, color=0xFF0000, bar_width=0.5)
    rain.add(["Jan", "Feb"], [1, 2])
    rain.add("Mar", 3)
    assert rain.y_axis() == axis and rain.y_axis().title == "mm" and graph.left == 10
    assert rain.symbol_color == 0xFF0000 and len(rain) == 3 and graph.find("snow") is None
    axis.from_, axis.to = 0, 5
    assert (axis.from_, graph.add_x_axis(from_=2, to=3).from_) == (0, 2)
    graph.title = "Rain"
    assert repr(graph) == "<qvgraph.Graph 'Rain'>" and repr(rain) == "<qvgraph.DataSet 'rain', 3 points>"


@pytest.mark.parametrize("wrong, failure, said", [
    (lambda page: setattr(page, "AxisThickness", 256), qvgraph.Fault, "Page.AxisThickness: Overflow"),
    (lambda page: setattr(page, "AxisColour", 1), AttributeError, "AxisColour"),
    (lambda page: page.AddDataPoint(1), TypeError, "Page.AddDataPoint: Y is missing"),
    (lambda page: page.AddDataPoint(1, "2"), TypeError, "Page.AddDataPoint: Y must be a number, not str"),
    (lambda page: page.AddDataPoint(1, 2, Z=3), TypeError, "no parameter named Z"),
    (lambda page: page.graph("").line("", colour=1), TypeError, "no option named colour"),
    (lambda page: page.graph("").line("", color="red"), ValueError, "color is no colour"),
    (lambda page: page.UseLook("odd"), qvgraph.Fault, "Page.UseLook"),
])
def test_mistakes_name_member_and_argument(wrong, failure, said):
    page = qvgraph.Page(100, 100)
    page.NewGraph("")
    with pytest.raises(failure, match=said):
        wrong(page)


def test_a_fault_has_number_source_and_text():
    with pytest.raises(qvgraph.Fault) as caught:
        qvgraph.Page(100, 100).AxisValue1
    assert caught.value.number == 9 and caught.value.source == "Page.AxisValue1" and caught.value.text
    page = qvgraph.Page(100, 100)
    graph = page.graph("gone")
    page.Reset()
    assert graph.discarded() and not graph
    with pytest.raises(qvgraph.Fault) as caught:
        graph.title
    assert caught.value.number == 91


def test_reported_failures_are_events_and_warnings_without_a_handler(tmp_path):
    page = qvgraph.Page(100, 100)
    with pytest.warns(RuntimeWarning, match="SaveImage"):
        page.SaveImage(str(tmp_path / "none" / "page.png"))
    heard = []
    page.on_error_msg = lambda source, description: heard.append((source, description))
    page.SaveImage(str(tmp_path / "none" / "page.png"))
    assert len(heard) == 1 and "SaveImage" in heard[0][0] and "none" in heard[0][1]
    with pytest.raises(qvgraph.Fault):
        page.save(tmp_path / "none" / "page.png")


def test_handlers_answer_and_what_they_throw_comes_out():
    page = qvgraph.Page(300, 200)
    page.NewGraph("")
    page.Refresh()
    page.on_key_press = lambda key, x, y: 0 if key == 65 else None
    assert page.Picture1_KeyPress(65) == 0 and page.Picture1_KeyPress(66) == 66
    page.on_graph_scale_changed = lambda: 1 / 0
    with pytest.raises(ZeroDivisionError):
        page.NewGraph("other", 0, 1, 0, 1)
    page.on_graph_scale_changed = None
    page.NewGraph("third", 0, 1, 0, 1)
    assert page.NumGraphs == 3
    with pytest.raises(TypeError, match="on_click"):
        page.on_click = 3


def test_a_page_that_its_handler_leads_to_is_collected():
    class Listener:
        pass

    page, listener = qvgraph.Page(50, 50), Listener()
    listener.page = page
    page.on_click = lambda x, y: listener
    gone = weakref.ref(listener)
    del page, listener
    gc.collect()
    assert gone() is None


def test_memory_is_flat_over_many_pages():
    def kilobytes():
        gc.collect()
        ctypes.CDLL(None).malloc_trim(0)
        return int(re.search(r"VmRSS:\s+(\d+)", pathlib.Path("/proc/self/status").read_text()).group(1))

    def make(count):
        for _ in range(count):
            page = qvgraph.Page(16, 16)
            page.on_error_msg = lambda source, description: page
            page.graph("").line("").add([1, 2], [3, 4])

    rounds = 1000 if "QV_SANITIZED" in os.environ else 50000
    make(1000)
    before = kilobytes()
    make(rounds)
    if "QV_SANITIZED" not in os.environ:
        assert kilobytes() - before < 10000


def test_notebooks_get_pictures_and_never_a_script():
    page = qvgraph.plot([1, 2, 3], [1, 4, 9], title="<script>alert(1)</script>")
    assert page._repr_png_() == page.to_png() and page._repr_svg_() is None and page._repr_html_() is None
    qvgraph.set_notebook_format("svg")
    assert page._repr_svg_() == page.to_svg()
    qvgraph.set_notebook_format("html")
    html = page._repr_html_()
    qvgraph.set_notebook_format("png")
    assert html.startswith("<img ") and "<script" not in html and "data:image/png;base64," in html


@pytest.mark.parametrize("kind", ["line", "symbols", "bars", "area", "steps", "histogram", "heat map"])
def test_plot_draws_each_kind(kind):
    empty = qvgraph.plot([], []).to_png()
    page = qvgraph.plot([[1, 2], [3, 4]] if kind == "heat map" else [1, 2, 3, 5], kind=kind, title="t")
    assert page.to_png() != empty and page.graphs()[0].title == "t"


def test_plot_takes_several_columns_and_says_what_is_wrong():
    sets = qvgraph.plot([1, 2], {"a": [1, 2], "b": [3, 4]}, log="y").graphs()[0].data_sets()
    assert [set.legend for set in sets] == ["a", "b"] and sets[0].y_axis().log
    for wrong, said in (({"kind": "pie"}, "kind"), ({"log": "z"}, "log"), ({"labels": ["a", "b"]}, "labels")):
        with pytest.raises(ValueError, match=said):
            qvgraph.plot([1, 2], [3, 4], **wrong)
    assert len(qvgraph.plot.__doc__.splitlines()) <= 12


def test_formulas():
    numpy = pytest.importorskip("numpy")
    formula = qvgraph.Expression()
    formula.define("hyp(a, b) = SQR(a^2 + b^2)")
    formula.compile("hyp(x, y)")
    assert formula.value(x=3, y=4) == 5 and formula["y"] == 4
    assert formula.value_over("x", numpy.array([0.0, 3.0])).tolist() == [4, 5]
    with pytest.raises(KeyError):
        formula["nobody"]
    with pytest.raises(qvgraph.ExpressionError, match=r"\n2 \+\* 3\n   \^"):
        formula.compile("2 +* 3")
    formula.compile("1 / x")
    formula.raise_errors = False
    assert numpy.isnan(formula.value_over("x", [0.0])[0]) and "Div by zero" in formula.error
