#pragma once

#include "globals/system/Descriptor_p.h"

#include <QSocketNotifier>

#include <array>

#include <csignal>

namespace globalsctl {

/// Keeps the signals that ask the program to end from ending it, as long as the scope lives, so that nothing
/// is left half done. When events are processed, a signal becomes the abort request of the StateHandler.
///
/// On the main thread, and one at a time. A signal that is ignored already, as by nohup, stays ignored.
class Interruption
{
    Q_DISABLE_COPY(Interruption)

public:
    /// Throws Failure when the process cannot open another descriptor.
    Interruption();
    ~Interruption();

    /// The signal that has arrived, 0 for none.
    int signal();

    /// Throws Failure, which names the \p consequence, when a signal has arrived.
    void check(const QString& consequence);

    /// Becomes readable when a signal arrives.
    int descriptor() const { return m_readEnd.get(); }

private:
    static constexpr std::array<int, 3> SIGNALS = {SIGHUP, SIGINT, SIGTERM};

    explicit Interruption(const std::array<int, 2>& pipe);
    void requestAbort();

    const TEKLUVA::Descriptor m_readEnd;
    const TEKLUVA::Descriptor m_writeEnd;
    QSocketNotifier m_notifier;
    std::array<struct sigaction, SIGNALS.size()> m_before{};
    int m_signal = 0;
};

} // namespace globalsctl
