#include "globals/DataBlock.h"

namespace TEKLUVA {

const char* DataBlock::faultOf(const QByteArray& block)
{
    const auto size = block.size() - HEADER_SIZE;
    if (size < 0)
        return "The data block is shorter than its header.";
    if (size % BLOCK_SIZE != 0)
        return "The data block does not end with a whole block of the cipher.";
    const int padding = static_cast<uchar>(block[0]);
    return padding > MAX_PAD_COUNT || padding > size ? "The data block has an invalid pad count." : nullptr;
}

} // namespace TEKLUVA
