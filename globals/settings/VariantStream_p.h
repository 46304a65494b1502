#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QVariant>

/// The bytes that QDataStream makes of a QVariant, as they stand in settings files.
namespace TEKLUVA::VariantStream {

/// \name Versions
/// Fixed for ever: those that QSettings uses since Qt 4.0 and, for a QDateTime alone, since Qt 5.6.
/// @{
constexpr QDataStream::Version VERSION = QDataStream::Qt_4_0;
constexpr QDataStream::Version TIME_VERSION = QDataStream::Qt_5_6;
/// @}

/// The same bytes with each version of Qt.
/// @{
QByteArray write(const QVariant& variant);
QByteArray writeTime(const QDateTime& time);
/// @}

/// \name Reading
/// Whatever the bytes are, the process goes on: types that Qt reads at the caller's risk, such as pens and
/// images, are not read, and neither are lists and maps nested in more than 64 others. Invalid for these and
/// for what is damaged.
/// @{
QVariant read(const QByteArray& bytes, QDataStream::Version version = VERSION);
QVariant readTime(const QByteArray& bytes);
/// @}

} // namespace TEKLUVA::VariantStream
