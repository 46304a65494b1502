#pragma once

#include "globals/PresetManager.h"

#include <QMap>
#include <QStringList>

namespace globalsctl {

/// A preset file, read into the PresetManager as the application reads it, except that reading continues
/// after a faulty line. The file is protected or plain text.
class PresetFile
{
public:
    /// Installs the built-in presets and reads the file over them. Throws Failure or TEKLUVA::Exception
    /// for a file that cannot be read at all; faulty lines are for remarks().
    explicit PresetFile(const QString& path);
    /// Stands for a file without lines.
    PresetFile();

    bool hasFaults() const { return m_hasFaults; }
    int noteCount() const { return m_noteCount; }
    /// The faults of the lines, in their order, as "FILE:LINE: error: MESSAGE", and as "note" what is allowed
    /// but may surprise.
    QStringList remarks() const;
    /// Leaves the PresetManager as the application has it after this file: it ends at the first fault.
    void readAsApplication() const;
    /// Whether the file is plain text.
    bool isPlain() const { return m_isPlain; }
    /// What its writer wrote.
    QString text() const { return m_text; }
    /// What the file contains, protected or plain.
    const QByteArray& bytes() const { return m_bytes; }
    /// The number of presets that the file sets.
    int presetCount() const { return static_cast<int>(m_written.size()); }
    /// The value of \p preset before the file was read.
    QVariant builtIn(TEKLUVA::E_PresetValue preset) const { return m_builtIn.value(preset); }

private:
    struct Written
    {
        int line;
        QString key;
        QString value;
    };

    static void fill();
    void installBuiltIn();
    void readLines();
    void readEntry(const TEKLUVA::PresetLine& entry, int line);
    void write(TEKLUVA::E_PresetValue preset, const TEKLUVA::PresetLine& entry, int line);
    void noteIfGivenBefore(TEKLUVA::E_PresetValue preset, const TEKLUVA::PresetLine& entry, int line);
    void noteWithoutEffect();
    void noteOutOfBounds();
    void addFault(int line, const QString& message);
    void addNote(int line, const QString& message);

    const QString m_path;
    const QByteArray m_bytes;
    const bool m_isPlain;
    QString m_text;
    bool m_hasFaults = false;
    int m_noteCount = 0;
    QMap<int, QStringList> m_remarks; ///< by line
    QMap<TEKLUVA::E_PresetValue, TEKLUVA::PresetDescription> m_descriptions;
    QMap<TEKLUVA::E_PresetValue, QVariant> m_builtIn;
    QMap<TEKLUVA::E_PresetValue, int> m_lines;       ///< where a preset was last given, rightly or not
    QMap<TEKLUVA::E_PresetValue, Written> m_written; ///< what was last accepted for a preset
};

/// Prints the file's remarks as notes.
void printRemarks(const PresetFile& file);

} // namespace globalsctl
