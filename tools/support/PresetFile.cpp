#include "support/PresetFile.h"

#include "support/Block.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"
#include "support/PresetBounds.h"
#include "support/PresetTypes.h"
#include "support/Suggestion.h"

#include "globals/DataBlock.h"
#include "globals/Exception.h"

#include <QTemporaryFile>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// Bytes. A preset file has about a hundred lines; a larger file was named by mistake.
constexpr qint64 LARGEST_FILE = 1 << 20;

bool isUtf8(const QByteArray& bytes)
{
    // What is none becomes a replacement character; a byte order mark is not kept.
    const QByteArray mark = bytes.startsWith("\xef\xbb\xbf") ? bytes.left(3) : QByteArray();
    return mark + QString::fromUtf8(bytes).toUtf8() == bytes;
}

/// Whether \p bytes are the readable text of a preset file and not a protected one.
bool isText(const QByteArray& bytes)
{
    return isReadableText(QString::fromUtf8(bytes.constData(), bytes.size()))
           && (isUtf8(bytes) || DataBlock::faultOf(bytes));
}

/// The text of a protected preset file with \p bytes that came through the standard input: the library reads
/// such files by their names only.
QString textOfInput(const QByteArray& bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush())
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(file.fileName(), file.errorString()));
    return PresetManager::textOfFile(file.fileName());
}

/// The text of the protected file \p path, which has \p bytes.
QString decryptedText(const QString& path, const QByteArray& bytes)
{
    if (beginsLikeArchive(bytes)) {
        throw Failure(
            QStringLiteral(
                "File %1 is an archive but single file was expected; \"data list\" shows what is in it")
                .arg(path));
    }
    // Throws for an archive with something before its beginning.
    QString text = isStandardInput(path) ? textOfInput(bytes) : PresetManager::textOfFile(path);
    if (DataBlock::faultOf(bytes)) {
        throw Failure(
            QStringLiteral("File %1 is damaged: neither a protected preset file nor plain text").arg(path));
    }
    if (!isReadableText(text))
        throw Failure(QStringLiteral("File %1 is damaged, or protected with another password").arg(path));
    return text;
}

/// In the words of the library, and what was probably meant.
QString faultOfKey(const QString& key, const QList<PresetDescription>& presets)
{
    const QString fault = QStringLiteral("The preset key %1 is invalid").arg(key);
    if (key != key.trimmed())
        return fault + QStringLiteral(" (no blanks beside the \"=\")");
    QStringList keys;
    for (const PresetDescription& preset : presets)
        keys << preset.key;
    return fault + suggestion(key, keys);
}

} // namespace

PresetFile::PresetFile(const QString& path)
    : m_path(path)
    , m_bytes(contentOf(path, LARGEST_FILE))
    , m_isPlain(isText(m_bytes))
{
    m_text =
        m_isPlain ? QString::fromUtf8(m_bytes.constData(), m_bytes.size()) : decryptedText(path, m_bytes);
    installBuiltIn();
    readLines();
    noteWithoutEffect();
    noteOutOfBounds();
}

PresetFile::PresetFile()
    : m_isPlain(true)
{
    installBuiltIn();
}

void printRemarks(const PresetFile& file)
{
    for (const QString& remark : file.remarks())
        printNote(printable(remark));
}

QStringList PresetFile::remarks() const
{
    QStringList lines;
    for (auto line = m_remarks.begin(); line != m_remarks.end(); ++line) {
        for (const QString& remark : *line)
            lines << QStringLiteral("%1:%2: %3").arg(m_path, QString::number(line.key()), remark);
    }
    return lines;
}

void PresetFile::readAsApplication() const
{
    fill();
    try {
        PresetManager::getInstance()->readText(m_text);
    } catch (const Exception&) {
        return; // is among the remarks, and what was read before stays in force
    }
}

void PresetFile::fill()
{
    // A new one: minimums and maximums of a file before would stay in the old one.
    delete PresetManager::getInstance();
    PresetManager& presets = *PresetManager::getInstance();
    presets.fillNameMap();
    presets.setInitialPresets();
}

void PresetFile::installBuiltIn()
{
    fill();
    for (const PresetDescription& description : PresetManager::describePresets()) {
        m_descriptions.insert(description.value, description);
        m_builtIn.insert(description.value, PresetManager::getPreset(description.value));
    }
}

void PresetFile::readLines()
{
    const QStringList lines = m_text.split(QLatin1Char('\n'));
    for (int line = 1; line <= lines.size(); ++line) {
        // Caught here and not in main(): the lines after a faulty one are to be read, too.
        try {
            if (const auto entry = PresetManager::parseLine(lines[line - 1]))
                readEntry(*entry, line);
        } catch (const Exception& e) {
            addFault(line, QString::fromUtf8(e.getDescription()));
        }
    }
}

void PresetFile::readEntry(const PresetLine& entry, int line)
{
    const E_PresetValue preset = PresetManager::getInstance()->getKey(entry.key);
    if (!m_descriptions.contains(preset)) {
        addFault(line, faultOfKey(entry.key, m_descriptions.values()));
        return;
    }
    noteIfGivenBefore(preset, entry, line);
    const PresetType& type = presetType(m_descriptions[preset].type);
    if (type.accepts(entry.value))
        write(preset, entry, line);
    else
        addFault(line, QStringLiteral("%1 wants %2, not \"%3\"")
                           .arg(entry.key, QString::fromLatin1(type.wanted), entry.value));
}

void PresetFile::write(E_PresetValue preset, const PresetLine& entry, int line)
{
    PresetManager::getInstance()->setPreset(preset, entry.value);
    const PresetDescription& description = m_descriptions[preset];
    // Text is not moved into bounds: it is taken or refused.
    const bool isRefused = description.type == QLatin1String("string")
                           && PresetManager::getPreset(preset).toString() != entry.value;
    if (isRefused)
        addFault(line,
                 QStringLiteral("%1 wants %2, not \"%3\"").arg(entry.key, description.bounds, entry.value));
    else
        m_written.insert(preset, {line, entry.key, entry.value});
}

void PresetFile::noteIfGivenBefore(E_PresetValue preset, const PresetLine& entry, int line)
{
    if (m_lines.contains(preset))
        addNote(line, QStringLiteral("%1 is given already in line %2").arg(entry.key).arg(m_lines[preset]));
    m_lines.insert(preset, line);
}

void PresetFile::noteWithoutEffect()
{
    // After all lines are read, because a later one may move the value of an earlier one.
    for (auto written = m_written.begin(); written != m_written.end(); ++written) {
        const PresetDescription& description = m_descriptions[written.key()];
        const PresetType& type = presetType(description.type);
        const QJsonValue inForce = type.normal(PresetManager::getPreset(written.key()));
        if (type.normal(written->value) == inForce)
            continue;
        addNote(written->line, QStringLiteral("%1 is %2, not %3, once the file is read (%4)")
                                   .arg(written->key, inWords(inForce), written->value, description.bounds));
    }
}

void PresetFile::noteOutOfBounds()
{
    for (const OutOfBounds& found : valuesOutOfBounds()) {
        // Where the value was given, or else the bound that passed it.
        const int line = m_lines.value(found.preset.value, m_lines.value(found.bound.preset));
        addNote(line, found.words() + QStringLiteral(", once the file is read"));
    }
}

void PresetFile::addFault(int line, const QString& message)
{
    m_hasFaults = true;
    m_remarks[line] << QStringLiteral("error: ") + message;
}

void PresetFile::addNote(int line, const QString& message)
{
    ++m_noteCount;
    m_remarks[line] << QStringLiteral("note: ") + message;
}

} // namespace globalsctl
