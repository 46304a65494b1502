#include "Bench.h"

#include "globals/Log.h"

#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <QFile>

#include <atomic>
#include <memory>
#include <vector>

using namespace TEKLUVA;

namespace {

constexpr const char* MESSAGE = "The model \"chair-0815\" was loaded from the cache.";

/// What a log window does first when a line arrives: it notes that there is one.
std::atomic<unsigned int> linesToShow{0};

Log& ourLog()
{
    static auto* const LOG = [] {
        auto* log = new Log("benchmark", true); // the registry deletes it
        QObject::connect(log, &Log::entryAdded, [] { ++linesToShow; });
        return log;
    }();
    return *LOG;
}

/// Lines of the same length as ours, each flushed.
spdlog::logger& theirLog()
{
    static const auto LOGGER = [] {
        const QByteArray path =
            QFile::encodeName(Bench::folder(QStringLiteral("logs")) + QStringLiteral("/spdlog.log"));
        auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path.toStdString(), true);
        auto logger = std::make_shared<spdlog::logger>("benchmark", std::move(sink));
        logger->set_formatter(std::make_unique<spdlog::pattern_formatter>(
            "%-9l%d.%m.%Y %H:%M:%S  %v", spdlog::pattern_time_type::local, "\r\n"));
        logger->flush_on(spdlog::level::trace);
        return logger;
    }();
    return *LOGGER;
}

void logWithUs(benchmark::State& state)
{
    Bench::measure(state, [] {
        ourLog().logStatusMessage(MESSAGE, "", 0);
        return 0;
    });
    if (state.thread_index() == 0)
        ourLog().resetLog(true); // the other threads are behind their last line
}

void logWithThem(benchmark::State& state)
{
    Bench::measure(state, [] {
        theirLog().info(MESSAGE);
        return 0;
    });
}

/// What the line costs whoever has to keep it as well, as the library does.
void logWithThemAndKeep(benchmark::State& state)
{
    std::vector<std::unique_ptr<LogEntry>> kept;
    Bench::measure(state, [&kept] {
        theirLog().info(MESSAGE);
        kept.push_back(std::make_unique<LogEntry>(E_LL_INFO, MESSAGE));
        return 0;
    });
}

/// What an entry takes in memory beside the bytes of its text.
void measureEntry(benchmark::State& state)
{
    constexpr int ENTRIES = 100000;
    const std::string message(MESSAGE);
    for ([[maybe_unused]] const auto& run : state) {
        ourLog().resetLog(true);
        const std::int64_t before = Bench::allocatedBytes();
        for (int entry = 0; entry < ENTRIES; ++entry)
            ourLog().logStatusMessage(message, "", 0);
        const auto used = static_cast<double>(Bench::allocatedBytes() - before);
        state.counters["bytes beside the text"] = used / ENTRIES - static_cast<double>(message.size() + 1);
        ourLog().resetLog(true);
    }
}

void addSide(const std::string& side, void (*log)(benchmark::State& state))
{
    benchmark::RegisterBenchmark(("write one log line/1 thread/" + side).c_str(), log);
    benchmark::RegisterBenchmark(("write one log line/4 threads/" + side).c_str(), log)
        ->Threads(4)
        ->UseRealTime();
}

} // namespace

void Bench::addLogs()
{
    // Here, on the main thread, before any other asks for them.
    ourLog();
    theirLog();
    addSide("ours", &logWithUs);
    addSide("spdlog", &logWithThem);
    benchmark::RegisterBenchmark("write one log line/1 thread/spdlog with kept entries", &logWithThemAndKeep);
    benchmark::RegisterBenchmark("keep a log entry/100,000 entries/ours", &measureEntry)->Iterations(1);
}
