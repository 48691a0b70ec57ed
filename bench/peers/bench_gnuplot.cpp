// gnuplot as a separate process, PNG output: "png" (libgd, lines not smoothed) as aa=off, "pngcairo" as
// aa=on. Times inside the process come from gnuplot's own time(0.0); PNG encoding is part of every drawing
// time.
#include "common.h"
#include <sstream>
using namespace bench;

static char const* kPeer = "gnuplot";
static const std::string kDir = "gnuplot-data";

static std::vector<double> run(std::string const& script, double* whole = nullptr) {
    const std::string file = kDir + "/run" + std::to_string(getpid()) + ".gp";
    FILE* f = fopen(file.c_str(), "w");
    fputs(script.c_str(), f);
    fclose(f);
    std::vector<double> out;
    double const a = now();
    FILE* p = popen(("gnuplot " + file).c_str(), "r");
    char line[256];
    double v;
    while (p && fgets(line, sizeof line, p))
        if (sscanf(line, "T %lf", &v) == 1)
            out.push_back(v);
        else
            fprintf(stderr, "gnuplot: %s", line);
    if (!p || pclose(p) != 0) exit(1);
    if (whole) *whole = now() - a;
    unlink(file.c_str());
    return out;
}

int main(int argc, char** argv) {
    const Args a = parse(argc, argv);
    if (system(("mkdir -p " + kDir).c_str()) != 0) return 1;
    const std::string id = std::to_string(getpid());
    const std::string bin = kDir + "/d" + id + ".bin", txt = kDir + "/d" + id + ".txt";
    const std::string png = pngPath() ? pngPath() : kDir + "/o" + id + ".png";
    std::vector<double> x, y;
    auto write = [&](int sets, size_t n, double step) {
        FILE* f = fopen(bin.c_str(), "wb");
        for (int k = 0; k < sets; ++k) {
            makeSeries(n, x, y, kSeed + k, step * k);
            std::vector<double> xy;
            for (size_t i = 0; i < n; ++i) {
                xy.push_back(x[i]);
                xy.push_back(y[i]);
            }
            fwrite(xy.data(), 16, n, f);
        }
        fclose(f);
    };
    const std::string term = std::string("set terminal ") + (a.aa ? "pngcairo" : "png") + " size 1200,800\n";
    const std::string head = "set print '-'\n" + term + "unset key\nset xlabel 'x'\nset ylabel 'y'\n";
    const std::string set1 = "'" + bin + "' binary format='%2double' using 1:2";
    const std::string lines = " with lines lw 1 lc rgb 'blue'";
    const std::string discs = std::string(" with points pt 7 ps ") + (a.aa ? "0.85" : "1") + " lc rgb 'blue'";
    int const reps = a.n >= 10000000 || (a.aa && a.n >= 1000000) ? 1 : a.n >= 1000000 ? 3 : 7;
    auto timed = [&](std::string const& cmd, int times) {
        std::ostringstream s;
        s << "do for [i=1:" << times << "] { set output '" << png << "'; t0=time(0.0); " << cmd
          << "; unset output; print 'T ', sprintf('%.6f', time(0.0)-t0) }\n";
        return s.str();
    };

    if (a.work == "W1") {
        if (a.variant == "text") {
            makeSeries(a.n, x, y);
            FILE* f = fopen(txt.c_str(), "w");
            for (size_t i = 0; i < a.n; ++i) fprintf(f, "%.17g %.17g\n", x[i], y[i]);
            fclose(f);
        } else
            write(1, a.n, 0);
        const std::string src =
            a.variant == "text" ? "'" + txt + "' using 1:2 with lines" : set1 + " with lines";
        // "unknown" draws nothing, so this is the reading alone.
        std::ostringstream s;
        s << "set print '-'\nset terminal unknown\n"
          << "rss(d)=real(system(\"awk '/VmRSS/{print $2}' /proc/$PPID/status\"))\n"
          << "b=rss(0)\nt0=time(0.0)\nplot " << src
          << "\nprint 'T ', sprintf('%.6f', time(0.0)-t0)\nprint 'T ', sprintf('%.1f', rss(0)-b)\n"
          << "do for [i=1:" << std::min(reps, 3) << "] { t0=time(0.0); plot " << src
          << "; print 'T ', sprintf('%.6f', time(0.0)-t0) }\n";
        std::vector<double> t = run(s.str());
        if (t.size() < 3) return 1;
        double const kb = t[1];
        t.erase(t.begin() + 1);
        const std::string v = a.variant == "text" ? "read a text file" : "read a binary file";
        reportNs("W1", kPeer, v, a.n, summarise(t));
        reportBytes("W1", kPeer, v, a.n, kb * 1024);
    } else if (a.work == "W0") {
        double whole = 0;
        std::vector<double> t = run(head + timed("plot [0:1][0:1] 2", 9), &whole);
        reportMs("W0", kPeer, "axes only, draw+PNG", a.aa, 0, summarise(t));
        std::vector<double> w;
        for (int i = 0; i < 7; ++i) {
            run(head + timed("plot [0:1][0:1] 2", 1), &whole);
            w.push_back(whole);
        }
        reportMs("W0", kPeer, "axes only, whole process", a.aa, 0, summarise(w));
    } else if (a.work == "W4") {
        write(kManySets, kManyPoints, 0.05);
        std::ostringstream c;
        c << "plot for [k=0:" << kManySets - 1 << "] '" << bin << "' binary record=" << kManyPoints
          << " format='%2double' skip=k*" << kManyPoints * 16 << " using 1:2 with lines lw 1";
        double whole = 0;
        std::vector<double> t = run(head + timed(c.str(), 1) + timed("refresh", 3), &whole);
        reportMs("W4", kPeer, "refresh (draw+PNG)", a.aa, size_t(kManySets) * kManyPoints,
                 summarise({t.begin() + 1, t.end()}));
        reportMs("W4", kPeer, "plot (read+draw+PNG)", a.aa, size_t(kManySets) * kManyPoints,
                 summarise({t[0]}));
    } else if (a.work == "W6") {
        write(kPageCols * kPageRows, kPagePoints, 0);
        std::ostringstream c;
        c << "set multiplot layout " << kPageRows << "," << kPageCols
          << "; do for [k=0:" << kPageCols * kPageRows - 1 << "] { plot '" << bin
          << "' binary record=" << kPagePoints << " format='%2double' skip=k*" << kPagePoints * 16
          << " using 1:2" << lines << " }; unset multiplot";
        reportMs("W6", kPeer, "multiplot (read+draw+PNG)", a.aa, kPagePoints,
                 summarise(run(head + timed(c.str(), 9))));
    } else {
        write(1, a.n, 0);
        std::string cmd = "plot " + set1 + (a.work == "W3" ? discs : lines);
        std::string pre = head;
        if (a.work == "W5") pre += "set xrange [49.5:50.5]\nset yrange [-1.2:1.2]\n";
        std::vector<double> t = run(pre + timed(cmd, 1) + timed("refresh", reps));
        reportMs(a.work.c_str(), kPeer, "refresh (draw+PNG)", a.aa, a.n, summarise({t.begin() + 1, t.end()}));
        reportMs(a.work.c_str(), kPeer, "plot (read+draw+PNG)", a.aa, a.n, summarise({t[0]}));
        if (a.work == "W2" && a.n <= (a.aa ? 100000 : 1000000)) {
            std::vector<double> w;
            for (int i = 0; i < 3; ++i) {
                double whole = 0;
                run(pre + timed(cmd, 1), &whole);
                w.push_back(whole);
            }
            reportMs("W2", kPeer, "whole process", a.aa, a.n, summarise(w));
        }
    }
    unlink(bin.c_str());
    unlink(txt.c_str());
    return 0;
}
