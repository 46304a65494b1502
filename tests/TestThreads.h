#pragma once

#include <functional>
#include <thread>
#include <vector>

/// Threads that end, and are waited for, with the scope, whatever fails meanwhile: the program would be
/// aborted otherwise.
class TestThreads
{
public:
    TestThreads(const TestThreads&) = delete;
    TestThreads& operator=(const TestThreads&) = delete;

    /// \p work gets the thread's number; \p stop is called before they are waited for.
    TestThreads(
        int count, const std::function<void(int)>& work, std::function<void()> stop = [] {})
        : m_stop(std::move(stop))
    {
        for (int thread = 0; thread < count; ++thread)
            m_threads.emplace_back(work, thread);
    }
    ~TestThreads()
    {
        m_stop();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    /// Runs \p work in \p count threads until all have ended.
    static void run(int count, const std::function<void(int)>& work) { const TestThreads ended(count, work); }

private:
    std::function<void()> m_stop;
    std::vector<std::thread> m_threads;
};
