#include "Fuzz.h"

#include "tests/TestLog.h"

#include <QGuiApplication>

#include <cstdint>

// The functions that libFuzzer calls, and Replay.cpp.

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

// NOLINTNEXTLINE(readability-non-const-parameter): Qt and libFuzzer write to it
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static const TestHome::Home home;
    static const QGuiApplication application(*argc, *argv);
    TestHome::nameApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static TestLog::ActiveLog active;
    // A copy that ends where the input does, so that reading on is seen.
    fuzz(QByteArray(reinterpret_cast<const char*>(bytes), static_cast<int>(size)));
    TestHome::sendDeletions();
    active.log().resetLog(true);
    return 0;
}
