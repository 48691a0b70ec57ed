#include "control/members_by_name.h"
#include "control/style_rules.h"
#include "qvgraph/qvGraph.h"

#include <array>
#include <tuple>
#include <utility>

namespace qv::control {
namespace {

/// How an argument of a C++ parameter type is read from a Variant; `held` is what the method gets.
template <class T>
struct Passed;

template <>
struct Passed<double> {
    static constexpr Accepts accepts = Accepts::Number;
    double held;
    explicit Passed(Variant const& given) : held(number_of<double>(given)) {}
};

template <Number T>
struct Passed<Checked<T>> {
    static constexpr Accepts accepts = Accepts::Number;
    T held;
    explicit Passed(Variant const& given) : held(number_of<T>(given)) {}
};

template <>
struct Passed<ColorValue> {
    static constexpr Accepts accepts = Accepts::Number;
    Color held;
    explicit Passed(Variant const& given) : held(kind::color::from(given)) {}
};

template <>
struct Passed<std::string_view> {
    static constexpr Accepts accepts = Accepts::Text;
    std::string held;
    explicit Passed(Variant const& given) : held(text_of(given)) {}
};

template <Number T>
struct Passed<T&> {
    static constexpr Accepts accepts = Accepts::Number;
    T held;
    explicit Passed(Variant const& given) : held(number_of<T>(given)) {}
};

template <>
struct Passed<TextList&> {
    static constexpr Accepts accepts = Accepts::Texts;
    TextList held;
    explicit Passed(Variant const& given) {
        if (auto const* list = std::get_if<TextList>(&given)) held = *list;
    }
};

template <>
struct Passed<std::span<double const>> {
    static constexpr Accepts accepts = Accepts::Numbers;
    NumberList held;
    explicit Passed(Variant const& given) {
        if (auto const* list = std::get_if<NumberList>(&given)) held = *list;
    }
};

template <class... Parameters>
struct Signature {
    static constexpr std::array<Accepts, sizeof...(Parameters)> accepts{Passed<Parameters>::accepts...};
    static constexpr std::array<bool, sizeof...(Parameters)> by_reference{std::is_reference_v<Parameters>...};

    template <class Function>
    static Variant call(Function&& function, std::span<Variant> arguments) {
        return call(function, arguments, std::index_sequence_for<Parameters...>());
    }

private:
    template <class Function, std::size_t... i>
    static Variant call(Function& function, [[maybe_unused]] std::span<Variant> arguments,
                        std::index_sequence<i...>) {
        [[maybe_unused]] std::tuple<Passed<Parameters>...> passed{Passed<Parameters>(arguments[i])...};
        auto const write_back = [&] {
            ((std::is_reference_v<Parameters> ? void(arguments[i] = std::get<i>(passed).held) : void()), ...);
        };
        if constexpr (std::is_void_v<decltype(function(std::get<i>(passed).held...))>) {
            function(std::get<i>(passed).held...);
            write_back();
            return {};
        } else {
            Variant result = function(std::get<i>(passed).held...);
            write_back();
            return result;
        }
    }
};

template <auto member>
struct Member;

template <class Result, class... Parameters, Result (qvGraph::*member)(Parameters...)>
struct Member<member> : Signature<Parameters...> {
    static Variant call(qvGraph& graph, std::span<Variant> arguments) {
        return Signature<Parameters...>::call([&graph](auto&... held) { return (graph.*member)(held...); },
                                              arguments);
    }
};

template <class Result, class... Parameters, Result (qvGraph::*member)(Parameters...) const>
struct Member<member> : Signature<Parameters...> {
    static Variant call(qvGraph& graph, std::span<Variant> arguments) {
        return Signature<Parameters...>::call([&graph](auto&... held) { return (graph.*member)(held...); },
                                              arguments);
    }
};

/// A parameter of a plain method: required, or with a default.
struct Named {
    std::string_view name;
    Variant default_value = {};
};

template <auto member>
MethodRow plain_method(std::string_view name, std::vector<Named> const& parameters = {}) {
    MethodRow row{name, {}, &Member<member>::call};
    for (std::size_t i = 0; i < Member<member>::accepts.size(); ++i) {
        Named const& named = parameters.at(i);
        row.parameters.push_back({named.name, named.default_value.is_empty(), named.default_value,
                                  Member<member>::accepts[i], Member<member>::by_reference[i]});
    }
    return row;
}

// For each style method: visits its parameters in order.
#define QV_STYLE(method, target)                                                                             \
    template <class Visitor>                                                                                 \
    void each_parameter(method##Arguments& given, Visitor&& visit) {
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)                                         \
    visit(kind::kind_(), #name, given.name, decltype(rule)::writes_back);
#define QV_STYLE_END(method, then) }
#include "control/styles.def"

template <class Arguments, void (qvGraph::*method)(Arguments&)>
Variant call_style(qvGraph& graph, std::span<Variant> arguments) {
    Arguments given;
    std::size_t next = 0;
    each_parameter(given, [&]<class Kind>(Kind, std::string_view, auto& parameter, bool) {
        parameter = Kind::from(arguments[next++]);
    });
    (graph.*method)(given);
    next = 0;
    each_parameter(given, [&]<class Kind>(Kind, std::string_view, auto& parameter, bool) {
        arguments[next++] = static_cast<typename Kind::value>(parameter);
    });
    return {};
}

template <class Arguments, void (qvGraph::*method)(Arguments&)>
MethodRow style_method(std::string_view name) {
    MethodRow row{name, {}, &call_style<Arguments, method>};
    Arguments defaults;
    each_parameter(defaults,
                   [&]<class Kind>(Kind, std::string_view parameter, auto& value, bool writes_back) {
                       row.parameters.push_back({parameter, false, static_cast<typename Kind::value>(value),
                                                 Kind::accepts, writes_back});
                   });
    return row;
}

std::vector<MethodRow> make_method_table() {
    using Q = qvGraph;
    return {
        plain_method<&Q::Reset>("Reset"),
        plain_method<&Q::NewGraph>("NewGraph",
                                   {{"GraphName"}, {"x1", 0.0}, {"x2", 0.0}, {"y1", 0.0}, {"y2", 0.0}}),
        plain_method<&Q::NewXAxis>("NewXAxis", {{"AxisName"}, {"a1", 0.0}, {"a2", 0.0}}),
        plain_method<&Q::NewYAxis>("NewYAxis", {{"AxisName"}, {"y1", 0.0}, {"y2", 0.0}}),
        plain_method<&Q::SetSelectedGraph>("SetSelectedGraph", {{"GraphIndex"}}),
        plain_method<&Q::GetSelectedGraph>("GetSelectedGraph"),
        plain_method<&Q::GetGraphNames>("GetGraphNames", {{"GraphTitles"}, {"NumGraphs"}}),
        plain_method<&Q::GraphTitle>("GraphTitle"),
        plain_method<&Q::SelectXaxis>("SelectXaxis", {{"Index", 1}}),
        plain_method<&Q::SelectYaxis>("SelectYaxis", {{"Index", 1}}),
        plain_method<&Q::SetSelectedAxis>("SetSelectedAxis", {{"AxisIndex"}}),
        plain_method<&Q::GetSelectedAxisIndex>("GetSelectedAxisIndex", {{"XY"}}),
        plain_method<&Q::GetAxisNames>("GetAxisNames", {{"AxisNames"}, {"NumAxes"}}),
        plain_method<&Q::SetSelectedData>("SetSelectedData", {{"DataIndex"}}),
        plain_method<&Q::GetSelectedData>("GetSelectedData", {{"DataIndex"}}),
        plain_method<&Q::GetDataSetNames>("GetDataSetNames", {{"DataSetNames"}, {"NumDataSets"}}),
        plain_method<&Q::SetShowXYcoords>("SetShowXYcoords", {{"TF"}}),
        plain_method<&Q::NewDataSet>("NewDataSet", {{"Legend"}, {"InLegendTable", true}}),
        plain_method<&Q::AddDataPoint>("AddDataPoint",
                                       {{"X"}, {"Y"}, {"E", 0.0}, {"DataSet", 0}, {"DataID", ""}}),
        plain_method<&Q::AddDataPoints>("AddDataPoints", {{"X"}, {"Y"}, {"E", NumberList()}, {"DataSet", 0}}),
        plain_method<&Q::AddDataColumns>("AddDataColumns", {{"X"},
                                                            {"Y"},
                                                            {"Extra1"},
                                                            {"Extra2", NumberList()},
                                                            {"Extra3", NumberList()},
                                                            {"Extra4", NumberList()},
                                                            {"DataSet", 0}}),
        plain_method<&Q::DropDataPoints>("DropDataPoints", {{"Count"}, {"DataSet", 0}}),
        plain_method<&Q::FitAxes>("FitAxes", {{"Margin", 0.05}}),
        plain_method<&Q::DefineFunction>("DefineFunction", {{"Text"}}),
        plain_method<&Q::CheckFormula>("CheckFormula", {{"MathFunc"}}),
        plain_method<&Q::AddMathFunc>("AddMathFunc", {{"MathFunc"}, {"Fromx", 0.0}, {"Tox", 0.0}}),
        plain_method<&Q::AddText>("AddText", {{"Text"},
                                              {"TextX"},
                                              {"TextY"},
                                              {"TextOri"},
                                              {"TextFont"},
                                              {"TextColor"},
                                              {"TextAngle"},
                                              {"TextPercent"}}),
        plain_method<static_cast<void (Q::*)(std::string_view)>(&Q::UseLook)>("UseLook", {{"Name"}}),
        plain_method<&Q::GetAxisRange>("GetAxisRange", {{"a1"}, {"a2"}}),
        plain_method<&Q::SetAxisTicks>("SetAxisTicks", {{"Major"}, {"Minor", NumberList()}}),
        plain_method<&Q::SetHistogramEdges>("SetHistogramEdges", {{"Edges"}}),
        plain_method<&Q::SetTooltip>("SetTooltip", {{"Tooltip"}}),
        plain_method<&Q::SetCrossHair>("SetCrossHair", {{"Style"}}),
        plain_method<&Q::Refresh>("Refresh"),
        plain_method<&Q::RefreshCurrentGraph>("RefreshCurrentGraph"),
        plain_method<&Q::RefreshGraphs>("RefreshGraphs", {{"WhichIndex"}, {"LegndOnPic1"}}),
        plain_method<&Q::PrintImage>("PrintImage", {{"Landscape", false}}),
        plain_method<&Q::SaveImage>("SaveImage", {{"Filename"}}),
        plain_method<&Q::CopyToClipboard>("CopyToClipboard"),
        plain_method<&Q::GetGradient>("GetGradient",
                                      {{"QvColor1"}, {"QvColor2"}, {"gAngle"}, {"gShift"}, {"gStyle"}}),
        plain_method<&Q::GetColor>("GetColor", {{"QvColor1"}}),
#define QV_STYLE(method, target) style_method<method##Arguments, &Q::method>(#method),
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)
#define QV_STYLE_END(method, then)
#include "control/styles.def"
    };
}

} // namespace

std::span<MethodRow const> method_table() {
    static const std::vector<MethodRow> rows = make_method_table();
    return rows;
}

} // namespace qv::control
