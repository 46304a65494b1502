// Runs a fuzz target over the files of the folders that are named, with any compiler.

#include "tests/TestFiles.h"

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        for (const QString& name : folder.entryList(QDir::Files)) {
            std::printf("%s\n", qPrintable(name)); // the last one is the culprit
            const QByteArray content = TestFiles::contentOf(folder.filePath(name));
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.constData()),
                                   static_cast<std::size_t>(content.size()));
            ++count;
        }
    }
    return count > 0 ? 0 : 1;
}
