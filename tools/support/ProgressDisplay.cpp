#include "support/ProgressDisplay.h"

#include "support/Console.h"
#include "support/Output.h"

#include "globals/StateHandler.h"

namespace globalsctl {

using namespace TEKLUVA;

namespace {

constexpr int WIDEST_BAR = 30;
constexpr qint64 DRAWING_PAUSE = 100; ///< milliseconds

int percentOf(const ProgressStep& step)
{
    constexpr quint64 ALL = 100;
    const quint64 steps = qMax(1U, step.getProgressBarSteps());
    return static_cast<int>(qMin(ALL, ALL * step.getCurrentProgressBarStep() / steps));
}

QString lineOf(int percent, const QString& text, int columns)
{
    const int width = qMin(WIDEST_BAR, columns / 2);
    const QString bar =
        QString(width * percent / 100, QLatin1Char('#')).leftJustified(width, QLatin1Char('.'));
    return QStringLiteral("[%1] %2%  ").arg(bar).arg(percent, 3).append(printable(text)).left(columns);
}

} // namespace

ProgressDisplay::ProgressDisplay()
{
    if (!isCapableTerminal(StandardStream::Error))
        return;
    QObject::connect(StateHandler::getInstance(), &StateHandler::createNewProgressStepRequested,
                     &m_connections, [this](ProgressStep* step) { follow(step); });
}

ProgressDisplay::~ProgressDisplay()
{
    clear();
}

void ProgressDisplay::clear()
{
    if (m_drawn > 0)
        draw(QString());
    m_sinceDrawn.invalidate();
}

void ProgressDisplay::follow(ProgressStep* step)
{
    QObject::connect(step, &ProgressStep::updateProgressStepRequested, &m_connections,
                     [this](const ProgressStep* changed) { update(*changed); });
}

void ProgressDisplay::update(const ProgressStep& step)
{
    const int percent = percentOf(step);
    const bool isDue = !m_sinceDrawn.isValid() || m_sinceDrawn.hasExpired(DRAWING_PAUSE);
    if (percent == m_percent && !isDue)
        return;
    m_percent = percent;
    m_sinceDrawn.start();
    // Some terminals begin a new line after their last column.
    draw(lineOf(percent, step.getProgressStepText(), terminalColumns(StandardStream::Error) - 1));
}

void ProgressDisplay::draw(const QString& line)
{
    QByteArray bytes = '\r' + line.leftJustified(m_drawn).toUtf8();
    if (line.isEmpty())
        bytes += '\r';
    write(StandardStream::Error, bytes);
    m_drawn = line.size();
}

} // namespace globalsctl
