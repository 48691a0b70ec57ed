"""What becomes a column of numbers, and what is refused by the name of its argument."""
import array
import datetime
import threading

import numpy
import pytest

import qvgraph


def data_set(**axis):
    graph = qvgraph.Page(200, 150).graph("")
    graph.x_axis(**axis)
    return graph.data_set("")


@pytest.mark.parametrize("column", [
    [1, 2, 3], (1.0, 2.0, 3.0), range(1, 4), array.array("d", [1, 2, 3]), array.array("f", [1, 2, 3]),
    memoryview(array.array("h", [1, 2, 3])), numpy.array([1, 0, 2, 0, 3, 0], dtype=float)[::2],
    numpy.array([3.0, 2.0, 1.0])[::-1], numpy.array([1, 2, 3], dtype=">f8"),
    *(numpy.array([1, 2, 3], dtype=kind) for kind in "bBhHiIlLqQefdg"),
])
def test_columns_of_any_make_arrive_as_they_are(column):
    set = data_set()
    set.add(column, column)
    assert set.points().x.tolist() == set.points().y.tolist() == [1, 2, 3]


def test_missing_values_stay_missing():
    pandas = pytest.importorskip("pandas")
    set = data_set()
    set.add(numpy.ma.array([1.0, 2.0], mask=[False, True]), pandas.Series([3, None], dtype="Int64"))
    points = set.points()
    assert points.x[0] == 1 and numpy.isnan(points.x[1])
    assert points.y[0] == 3 and numpy.isnan(points.y[1])


@pytest.mark.parametrize("unit", ["s", "ms", "us", "ns", "m", "D"])
def test_dates_are_seconds_since_1970_whatever_their_unit(unit):
    set = data_set(time=True)
    set.add(numpy.array(["2026-03-14", "NaT"], dtype=f"M8[{unit}]"), [1, 2])
    assert set.points().x[0] == datetime.datetime(2026, 3, 14, tzinfo=datetime.timezone.utc).timestamp()
    assert numpy.isnan(set.points().x[1])


def test_moments_with_a_zone_and_without_one():
    zone = datetime.timezone(datetime.timedelta(hours=2))
    set = data_set(time=True)
    set.add([datetime.datetime(2026, 1, 1, 2, tzinfo=zone), datetime.datetime(2026, 1, 1)], [0, 0])
    x = set.points().x
    assert x[0] == x[1] == datetime.datetime(2026, 1, 1, tzinfo=datetime.timezone.utc).timestamp()


@pytest.mark.parametrize("x, y, failure, said", [
    ([1, 2], [1, 2, 3], ValueError, "DataSet.add: y has 3 values, but x has 2"),
    ([1, 2], numpy.array([1j, 2]), TypeError, "DataSet.add: y holds values of type complex128"),
    ([1, 2], numpy.ones((2, 2)), ValueError, "DataSet.add: y has 2 dimensions"),
    (numpy.array(["2026-01-01"], dtype="M8[s]"), [1], TypeError, "DataSet.add: x holds dates, but the axis"),
    ([1, 2], [object(), 2], TypeError, "DataSet.add: y holds object"),
])
def test_what_is_no_column_is_refused_by_its_name(x, y, failure, said):
    set = data_set()
    with pytest.raises(failure, match=said):
        set.add(x, y)
    assert len(set) == 0


def test_a_matrix_tells_its_own_columns_and_rows():
    shown = []
    for arguments in (numpy.arange(6.0).reshape(2, 3),), (numpy.arange(6.0), 3, 2), (numpy.arange(6.0).reshape(3, 2).T * 0,):
        page = qvgraph.Page(200, 150)
        page.graph("").heat_map("").grid(*arguments)
        shown.append(page.to_png())
    assert shown[0] == shown[1] != shown[2]
    with pytest.raises(TypeError, match="columns is missing"):
        page.graph("").heat_map("").grid(numpy.arange(6.0))


def test_pixels_are_no_copy_outlive_the_page_and_stay():
    page = qvgraph.Page(60, 40, look="classic")
    before = page.to_numpy()
    assert before.shape == (40, 60, 4) and not before.flags.writeable and not before.flags.owndata
    again = page.to_numpy(refresh=False)
    assert before.__array_interface__["data"] == again.__array_interface__["data"]
    kept = before.copy()
    page.graph("over it")
    assert (page.to_numpy() != kept).any()
    del page, again
    assert (before == kept).all()


def test_two_pages_are_drawn_in_two_threads():
    def drawn():
        page = qvgraph.Page(300, 200)
        line = page.graph("").line("")
        line.add(numpy.arange(20000.0), numpy.sin(numpy.arange(20000.0)))
        return page.to_png()

    found = []
    threads = [threading.Thread(target=lambda: found.append(drawn())) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert len(found) == 4 and set(found) == {drawn()}
