#pragma once

#include "TestData.h"
#include "TestLog.h"
#include "TestThreads.h"

#include "globals/Settings.h"

#include <QElapsedTimer>
#include <QLockFile>

#include <memory>

/// The one settings file of a test, in the working folder.
namespace TestSettings {

const QString FILE_NAME = "settings.ini"_q;
const QString LOCK_NAME = FILE_NAME + ".lock"_q;

inline QByteArray content(const QString& name = FILE_NAME)
{
    return TestFiles::textOf(name);
}

/// Puts what others wrote in the place of the file.
inline void replace(const QByteArray& content)
{
    QVERIFY(TestFiles::write(FILE_NAME, content));
}

inline std::unique_ptr<TEKLUVA::Settings> open(QObject* parent = nullptr)
{
    return std::make_unique<TEKLUVA::Settings>(FILE_NAME, QSettings::IniFormat, parent);
}

} // namespace TestSettings
