#include <qvgraph/HeadlessHost.h>
#include <cstdio>
#include <cmath>
using namespace qv;
int main(){ headless::HeadlessHost host({640,420}); auto& p=host.control(); p.UseLook("light");
p.PageColors({.Color1 = rgb(60, 72, 110), .Color2 = rgb(20, 24, 40), .GradientAngle = 270});
std::printf("%x %d\n", p.PageColor1(), int(p.PageTransparent()));
auto g=p.graph("x",{.left=5,.top=6,.width=90,.height=88});
std::printf("%x\n", p.PageColor1());
auto x=g.x_axis({.from=4700,.to=5000}); auto l=g.line(""); 
std::printf("%g %g %d\n", x.from(), x.to(), int(x.scale()));
l.add(0,1); std::printf("%g %g %d\n", x.from(), x.to(), int(x.scale()));
p.NewGraph("b"); p.SelectXaxis(); p.AxisScaleStyle({.Value1=4700,.Value2=5000,.ScaleStyle=1}); p.NewDataSet(""); p.AddDataPoint(0,1);
std::printf("%g %g %d\n", p.AxisValue1(), p.AxisValue2(), int(p.AxisScale()));
p.Refresh(); host.save("a.png");
}
