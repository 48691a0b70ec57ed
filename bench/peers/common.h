// Shared by every benchmark program here: the test series, the clock, the memory reading, the output line.
#pragma once
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace bench {

// 64-bit linear congruential generator; next() is in [0, 1).
struct Lcg {
    uint64_t s;
    explicit Lcg(uint64_t seed) : s(seed) {}
    double next() {
        s = s * 6364136223846793005ULL + 1442695040888963407ULL;
        return double(s >> 11) * 0x1p-53;
    }
};

constexpr uint64_t kSeed = 12345;

// x runs evenly from 0 to 100; y = sin(x) + uniform noise in [-0.1, 0.1) + offset.
inline void makeSeries(size_t n, std::vector<double>& x, std::vector<double>& y, uint64_t seed = kSeed,
                       double offset = 0) {
    x.resize(n);
    y.resize(n);
    Lcg r(seed);
    for (size_t i = 0; i < n; ++i) {
        x[i] = n > 1 ? 100.0 * double(i) / double(n - 1) : 0.0;
        y[i] = std::sin(x[i]) + 0.1 * (2.0 * r.next() - 1.0) + offset;
    }
}

inline double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Resident set of this process in bytes, after giving free heap pages back.
inline double residentBytes() {
    malloc_trim(0);
    long total = 0, res = 0;
    if (FILE* f = fopen("/proc/self/statm", "r")) {
        if (fscanf(f, "%ld %ld", &total, &res) != 2) res = 0;
        fclose(f);
    }
    return double(res) * double(sysconf(_SC_PAGESIZE));
}

struct Stat {
    double median = 0, min = 0; // seconds
    int reps = 0;
};

inline Stat summarise(std::vector<double> t) {
    std::sort(t.begin(), t.end());
    return {t[t.size() / 2], t.front(), int(t.size())};
}

// One warm-up call, then enough calls to fill `budget` seconds (3 to 25 of them). A call longer than
// 3 s is repeated once only and its warm-up kept; one longer than 12 s is not repeated at all.
template <class F>
Stat measure(F f, double budget = 1.5) {
    auto once = [&] {
        double a = now();
        f();
        return now() - a;
    };
    double const warm = once();
    std::vector<double> t;
    if (warm > 12) return {warm, warm, 1};
    if (warm > 3) {
        t = {warm, once()};
        return {0.5 * (t[0] + t[1]), std::min(t[0], t[1]), 2};
    }
    int const n = int(std::clamp(budget / std::max(warm, 1e-9), 3.0, 25.0));
    for (int i = 0; i < n; ++i) t.push_back(once());
    return summarise(t);
}

// One result line, tab separated; run-bench --peers collects those that start with "R".
inline void report(char const* work, char const* peer, std::string const& variant, int aa, size_t n,
                   double median, double min, char const* unit, int reps) {
    printf("R\t%s\t%zu\t%s\t%s\t%s\t%.4g\t%.4g\t%s\t%d\n", work, n, peer, variant.c_str(),
           aa < 0 ? "-"
           : aa   ? "on"
                  : "off",
           median, min, unit, reps);
    fflush(stdout);
}
// Highest resident set this process ever had, in MB (libraries and the input arrays included).
inline double peakMegabytes() {
    double kb = 0;
    if (FILE* f = fopen("/proc/self/status", "r")) {
        char line[128];
        while (fgets(line, sizeof line, f))
            if (sscanf(line, "VmHWM: %lf", &kb) == 1) break;
        fclose(f);
    }
    return kb / 1024;
}
inline void reportMs(char const* work, char const* peer, std::string const& variant, int aa, size_t n,
                     Stat s) {
    report(work, peer, variant, aa, n, s.median * 1e3, s.min * 1e3, "ms", s.reps);
    if (n == 1000000 && (!strcmp(work, "W2") || !strcmp(work, "W3")) && strcmp(peer, "gnuplot")
        && strcmp(peer, "plain C++"))
        report(work, peer, variant + ", peak resident of the process", aa, n, peakMegabytes(),
               peakMegabytes(), "MB", 1);
}
inline void reportNs(char const* work, char const* peer, std::string const& variant, size_t n, Stat s) {
    report(work, peer, variant, -1, n, s.median * 1e9 / double(n), s.min * 1e9 / double(n), "ns/pt", s.reps);
}
inline void reportBytes(char const* work, char const* peer, std::string const& variant, size_t n,
                        double bytes) {
    if (n >= 100000) // below that the page granularity of the reading dominates
        report(work, peer, variant, -1, n, bytes / double(n), bytes / double(n), "B/pt", 1);
}

// Times `fill`, which hands all n points to a new object; `drop` deletes that object outside the clock.
// The resident growth is taken on the first hand-over of the process.
template <class Fill, class Drop>
void measureLoad(char const* peer, std::string const& variant, size_t n, Fill fill, Drop drop) {
    std::vector<double> t;
    double const before = residentBytes();
    double total = 0;
    double bytes = 0;
    do {
        double const a = now();
        fill();
        t.push_back(now() - a);
        total += t.back();
        if (t.size() == 1) bytes = residentBytes() - before;
        if (t.size() == 1 && t[0] > 5) break; // too slow to repeat, and often as slow to delete
        drop();
    } while (t.size() < 3 || (total < 1.0 && t.size() < 25));
    reportNs("W1", peer, variant, n, summarise(t));
    reportBytes("W1", peer, variant, n, bytes);
}

struct Args {
    std::string work, variant;
    size_t n = 0;
    int aa = 0;
};
inline Args parse(int argc, char** argv) {
    Args a;
    if (argc < 4) {
        fprintf(stderr, "usage: %s WORK N AA [VARIANT]\n", argv[0]);
        exit(2);
    }
    a.work = argv[1];
    a.n = size_t(strtod(argv[2], nullptr));
    a.aa = atoi(argv[3]);
    a.variant = argc > 4 ? argv[4] : "";
    return a;
}

// Where to save the picture drawn, or null: set PEERS_PNG to look at what was measured.
inline char const* pngPath() {
    return getenv("PEERS_PNG");
}

constexpr int kWidth = 1200, kHeight = 800;
constexpr int kManySets = 100, kManyPoints = 10000;
constexpr int kPageCols = 4, kPageRows = 3, kPagePoints = 1000;
constexpr double kZoomLo = 49.5, kZoomHi = 50.5;

} // namespace bench
