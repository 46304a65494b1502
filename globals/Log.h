#pragma once

#include "globals/LogEntry.h"

#include <memory>

namespace TEKLUVA {

/// A named log: keeps its entries in memory and mirrors each as one line into NAME.log in the log folder
/// (E_PT_LOGS). A line is the level's label padded to nine characters, the time stamp "dd.MM.yyyy hh:mm:ss",
/// two blanks, the bytes of the message as given, CR and LF.
///
///     Log* log = new Log("tekluva-3D", false);          // registers itself with the LogManager
///     LogManager::getInstance()->setActiveLog(log);
///     log->logStatusMessage("Started.", "", 0);
///
/// Threads: logMessage() and its four shorthands, resetLog(), setLogName(), getName(), getFilePath() and
/// getEntryCount() may be called from any thread; lines are written whole, each once. writeEntry(), clear()
/// and getEntry() do not take the log's lock: call them on the main thread, and the first two while nobody
/// else uses the log.
///
/// Ownership: a log owns its entries and its file. The LogManager deletes the logs registered with it when it
/// is cleared; until then whoever created a log may delete it.
class GLOBALS_EXPORT Log : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(Log)

public:
    /// Creates and registers the log and its folder, not yet its file. With \p overwrite the first line
    /// starts the file afresh, without it lines are appended. A log made on another thread moves to the main
    /// thread.
    Log(std::string name, bool overwrite);
    ~Log() override;

    /// Adds an entry, emits contentChanged() and writes the line. A line that cannot be written stays in
    /// memory, unwritten, and nothing is reported. The last two arguments, a source location and a line
    /// number, are accepted and ignored. A level other than debug, info and warning is labelled as an error.
    void logMessage(E_LogLevel level, std::string message, std::string location, unsigned int line);
    void logDebugMessage(std::string message, std::string location, unsigned int line);
    void logStatusMessage(std::string message, std::string location, unsigned int line);
    void logWarningMessage(std::string message, std::string location, unsigned int line);
    void logErrorMessage(std::string message, std::string location, unsigned int line);

    /// Writes the line of \p entry unless it has been written before. A receiver of contentChanged() may call
    /// it, and so it does not lock.
    void writeEntry(LogEntry* entry);

    /// The entry at \p index, oldest first; it belongs to the log. For an index beyond the last one a new
    /// warning entry "Index out of range." that belongs to the caller.
    LogEntry* getEntry(unsigned int index);
    unsigned int getEntryCount() const;

    /// Deletes all entries and closes the file, which stays on disk as it is. Does not lock.
    void clear();

    /// clear(), and the next line starts the file afresh (\p overwrite) or is appended. Emits
    /// contentChanged().
    void resetLog(bool overwrite);

    /// Renames the log, its file and its registration. If the file cannot be renamed, the log goes on in the
    /// file of the new name. \p overwrite decides how that file is opened for the next line.
    void setLogName(std::string name, bool overwrite);

    std::string getName() const;
    /// The path of the log file, in UTF-8.
    std::string getFilePath() const;

    /// Always true: writing to the file cannot be switched off.
    bool writeToFile() const;
    /// Always true, and changes nothing.
    bool initWriting(bool write) const;

Q_SIGNALS:
    /// The entries changed. Emitted under the log's lock: a receiver connected directly must not call
    /// logMessage(), resetLog(), setLogName() or clear() of this log.
    void contentChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
