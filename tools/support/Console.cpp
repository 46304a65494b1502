#include "support/Console.h"

#include "support/Failure.h"

#include "globals/StateHandler.h"

namespace globalsctl {

void Interruption::check(const QString& consequence)
{
    if (signal() != 0)
        throw Failure(QStringLiteral("interrupted, %1").arg(consequence), Interrupted + signal());
}

void Interruption::requestAbort()
{
    if (signal() != 0)
        TEKLUVA::StateHandler::getInstance()->setAbort();
}

} // namespace globalsctl
