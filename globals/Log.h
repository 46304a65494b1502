#pragma once

#include "globals/LogEntry.h"

#include <limits>
#include <memory>
#include <vector>

namespace TEKLUVA {

/// A message of a log as a value.
struct LogLine
{
    qint64 time; ///< milliseconds since the epoch
    E_LogLevel level;
    std::string message;
};

/// Entries of a log at one moment. Each has a number, counted from 0 since the log was made, which it keeps
/// whatever happens to the entries before it.
struct LogLines
{
    quint64 oldest = 0; ///< the number of the oldest entry that the log has
    quint64 first = 0;  ///< the number of the first of these lines
    std::vector<LogLine> lines;
};

/// A named log: keeps its entries in memory and mirrors each as one line into NAME.log in the log folder
/// (E_PT_LOGS). A line is the level's label padded to nine characters, the time stamp "dd.MM.yyyy hh:mm:ss",
/// two blanks, the bytes of the message as given, CR and LF.
///
///     Log* log = new Log("tekluva-3D", false);          // registers itself with the LogManager
///     LogManager::getInstance()->setActiveLog(log);
///     log->logStatusMessage("Started.", "", 0);
///
/// Threads: all may be called from any thread but writeEntry(), clear() and getEntry(); lines are written
/// whole, each once. Those three do not take the log's lock: call them on the main thread, and the first two
/// while nobody else uses the log.
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

    /// \name The same for Qt's texts
    /// @{
    void logMessage(E_LogLevel level, const QString& message);
    void logDebugMessage(const QString& message);
    void logStatusMessage(const QString& message);
    void logWarningMessage(const QString& message);
    void logErrorMessage(const QString& message);
    /// @}

    /// Writes the line of \p entry unless it has been written before. A receiver of contentChanged() may call
    /// it, and so it does not lock.
    void writeEntry(LogEntry* entry);

    /// The entry at \p index, oldest first; it belongs to the log. For an index beyond the last one a new
    /// warning entry "Index out of range." that belongs to the caller. The object is made when it is asked
    /// for: who looks at many entries takes getLines().
    LogEntry* getEntry(unsigned int index);
    unsigned int getEntryCount() const;
    /// Copies of the entries from the number \p from on, or from the oldest that there is, up to \p atMost.
    LogLines getLines(quint64 from, unsigned int atMost = std::numeric_limits<unsigned int>::max()) const;

    /// Deletes all entries and closes the file, which stays on disk as it is. Does not lock.
    void clear();

    /// clear(), and the next line starts the file afresh (\p overwrite) or is appended. Emits
    /// contentChanged(). On another thread than the main one, entries that getEntry() has returned are
    /// deleted in the event loop.
    void resetLog(bool overwrite);

    /// Renames the log, its file and its registration. If the file cannot be renamed, the log goes on in the
    /// file of the new name. \p overwrite decides how that file is opened for the next line.
    void setLogName(std::string name, bool overwrite);

    /// \name Limits
    /// All off at first.
    /// @{

    /// Messages below \p level are neither kept nor written.
    void setThreshold(E_LogLevel level);
    E_LogLevel getThreshold() const;
    /// Keeps the newest \p count entries in memory; 0 for all. An entry that getEntry() has returned and that
    /// is dropped is deleted in the event loop.
    void setMaxEntryCount(unsigned int count);
    unsigned int getMaxEntryCount() const;
    /// A file that a line would make larger than \p bytes is moved to "NAME.log.1" first, the one of that
    /// name to "NAME.log.2", and so on; \p files of them are kept. 0 bytes for no limit. Several processes
    /// may write the file if all have the same limits, and a process may be killed at any time: no line is
    /// lost but those of the oldest file. A file that cannot be moved stays in use.
    void setRotation(qint64 bytes, int files);
    /// @}

    std::string getName() const;
    /// The path of the log file, in UTF-8.
    std::string getFilePath() const;

    /// Always true: writing to the file cannot be switched off.
    bool writeToFile() const;
    /// Always true, and changes nothing.
    bool initWriting(bool write) const;

Q_SIGNALS:
    /// The entries changed. Emitted under the log's lock: a receiver connected directly must not delete this
    /// log or call its logMessage(), resetLog(), setLogName(), setRotation() or clear().
    void contentChanged();
    /// A message was added, which is getEntry(\p index) until the log is emptied or drops an entry. Emitted
    /// after contentChanged(), with the same rule.
    void entryAdded(unsigned int index);

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
