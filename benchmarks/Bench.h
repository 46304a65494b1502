#pragma once

#include "Usage.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <chrono>
#include <string>

/// What the benchmarks have in common. A benchmark is named JOB/SIZE/SIDE; the report makes a row of each
/// side that is not "ours".
namespace Bench {

/// A folder of this name below the benchmarks' home, empty when it is asked for first. It goes with the
/// process.
QString folder(const QString& name);

/// Ends the process unless \p holds: a benchmark that compares different work is worth nothing.
void require(bool holds, const char* what);

/// \p size bytes that look like a text.
QByteArray text(int size);

/// Runs \p work over and over, and counts what one run allocates and writes.
template <typename Work>
void measure(benchmark::State& state, Work&& work)
{
    const Usage before = Usage::now();
    for ([[maybe_unused]] const auto& run : state)
        benchmark::DoNotOptimize(work());
    const Usage after = Usage::now();
    using benchmark::Counter;
    const auto each = [](std::int64_t count) {
        return Counter(static_cast<double>(count), Counter::kAvgIterations);
    };
    state.counters["allocations"] = each(after.allocations - before.allocations);
    state.counters["writes"] = each(after.writes - before.writes);
}

/// Adds a benchmark. \p make makes what it needs and returns the work to be measured.
template <typename Make>
benchmark::internal::Benchmark* add(const std::string& name, Make make)
{
    return benchmark::RegisterBenchmark(name.c_str(),
                                        [make](benchmark::State& state) { measure(state, make()); });
}

/// Adds a benchmark of something slow, by the wall clock: \p prepare runs before each \p work, unmeasured.
template <typename Prepare, typename Work>
benchmark::internal::Benchmark* addSlow(const std::string& name, Prepare prepare, Work work)
{
    const auto run = [prepare, work](benchmark::State& state) {
        for ([[maybe_unused]] const auto& iteration : state) {
            prepare();
            const auto start = std::chrono::steady_clock::now();
            require(work(), "a file job has failed");
            state.SetIterationTime(
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
    };
    return benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime();
}

/// \name The jobs, each added by its source
/// @{
void addArchives();
void addColourTemperature();
void addDataFiles();
void addExtraction();
void addFiles();
void addLogs();
void addMeasurement();
void addPresets();
void addProgress();
void addSettingsAccess();
void addStartup();
/// @}

} // namespace Bench
