// read_csv/N: from a CSV file of N rows and three columns to its picture, beside counting the lines of the
// file and one pass of std::from_chars over it; the picture_over_pass counter is the ratio of the two. What a
// row takes in memory is measured in processes of their own.
#include "benchmarks.h"
#include "qvplot/whole_page.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace qv::bench {
namespace {

using Clock = std::chrono::steady_clock;

// A file of some 29 bytes a row, removed in the end.
class BigFile {
public:
    explicit BigFile(std::size_t rows)
        : path_(std::filesystem::temp_directory_path()
                / ("qvbench-" + std::to_string(getpid()) + "-" + std::to_string(rows) + ".csv")) {
        std::ofstream stream(path_, std::ios::binary);
        std::mt19937 random(1); // NOLINT: the same file in each run
        std::uniform_real_distribution<double> step(-0.5, 0.5);
        double walk = 100;
        std::string text = "x,walk,noise\n";
        char line[80];
        for (std::size_t i = 0; i < rows; ++i) {
            walk += 0.01 * step(random);
            int const size = std::snprintf(line, sizeof line, "%.3f,%.6f,%.6f\n",
                                           static_cast<double>(i) * 1e-3, walk, 25 + 50 * step(random));
            text.append(line, static_cast<std::size_t>(size));
            if (text.size() < 1 << 20 && i + 1 < rows) continue;
            stream << text;
            text.clear();
        }
    }
    ~BigFile() {
        std::error_code none;
        std::filesystem::remove(path_, none);
    }
    BigFile(BigFile const&) = delete;
    BigFile& operator=(BigFile const&) = delete;
    std::filesystem::path const& path() const { return path_; }

private:
    std::filesystem::path path_;
};

void draw(std::filesystem::path const& file) {
    plot::PlotOptions options;
    options.files = {file};
    options.out = file.string() + ".png";
    plot::write_page(plot::read_data(options), options, plot::AfterDrawing::GiveUp);
    std::filesystem::remove(options.out);
}

// Calls `use` for each block of whole lines of a file.
void for_each_block(std::filesystem::path const& file, auto const& use) {
    std::FILE* const stream = std::fopen(file.c_str(), "rb");
    std::vector<char> block(1 << 18);
    std::size_t kept = 0;
    while (const std::size_t count = std::fread(block.data() + kept, 1, block.size() - kept, stream)) {
        char const* const end = block.data() + kept + count;
        char const* last = end;
        while (last > block.data() && last[-1] != '\n') --last;
        use(block.data(), last);
        kept = static_cast<std::size_t>(end - last);
        std::memmove(block.data(), last, kept);
    }
    std::fclose(stream);
}

// As `wc -l` counts.
std::size_t count_lines(std::filesystem::path const& file) {
    std::size_t lines = 0;
    for_each_block(file, [&](char const* begin, char const* end) {
        for (char const* p = begin;
             (p = static_cast<char const*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)))); ++p)
            ++lines;
    });
    return lines;
}

double sum_of_numbers(std::filesystem::path const& file) {
    double sum = 0;
    for_each_block(file, [&](char const* p, char const* end) {
        while (p < end) {
            double value = 0;
            auto const result = std::from_chars(p, end, value);
            sum += value;
            p = result.ec == std::errc() ? result.ptr + 1 : p + 1;
        }
    });
    return sum;
}

double seconds_since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Peak of a process that draws the file, in bytes.
double peak_memory(std::filesystem::path const& file) {
    pid_t const child = fork();
    if (child == 0) {
        draw(file);
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    constexpr double kilobyte = 1024;
    return static_cast<double>(usage.ru_maxrss) * kilobyte;
}

void read_csv(benchmark::State& state, std::size_t rows) {
    const BigFile file(rows), small(1000);
    double const bytes = peak_memory(file.path()) - peak_memory(small.path());
    double least_pass = 1e9, least_picture = 1e9;
    for (auto _ : state) {
        state.PauseTiming();
        auto start = Clock::now();
        benchmark::DoNotOptimize(count_lines(file.path()));
        benchmark::DoNotOptimize(sum_of_numbers(file.path()));
        least_pass = std::min(least_pass, seconds_since(start));
        start = Clock::now();
        state.ResumeTiming();
        draw(file.path());
        least_picture = std::min(least_picture, seconds_since(start));
    }
    state.counters["pass_ms"] = 1e3 * least_pass;
    state.counters["picture_over_pass"] = least_picture / least_pass;
    state.counters["bytes/row"] = bytes / static_cast<double>(rows);
}

} // namespace

void register_read_csv() {
    for (std::size_t const rows : {std::size_t{1000000}, std::size_t{10000000}})
        benchmark::RegisterBenchmark(("read_csv/" + std::to_string(rows)).c_str(), read_csv, rows)
            ->Iterations(3)
            ->Unit(benchmark::kMillisecond);
}

} // namespace qv::bench
