#include "Fuzz.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

using namespace TEKLUVA;

/// The length of a password, the password, and a protected block.
void fuzz(const QByteArray& input)
{
    constexpr int HEADER_SIZE = 17;
    const int length = input.isEmpty() ? 0 : static_cast<unsigned char>(input[0]);
    const QString password = textOf(input.mid(1, length));
    const QByteArray block = input.mid(1 + length);
    const DataFileReader reader(QString(), password);
    require(reader.decryptData(block).size() <= qMax(0, block.size() - HEADER_SIZE));
    const QByteArray written = DataFileCreator().encryptData(block, password);
    require(!DataFileCreator::canBeReadBack(password) || reader.decryptData(written) == block);
}
