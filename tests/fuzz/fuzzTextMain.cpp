// Fuzz target of the text reader: cmake -DSHOP_FUZZ=ON with clang, then run fuzz_text on a copy of the
// samples.
#include "import/textReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    try {
        SourceRows rows;
        textReader(SourceFile(bytes))->read({}, rows);
        if (rows.cellCount() != std::size_t(rows.rowCount()) * std::size_t(rows.columns.size()))
            std::abort();
    } catch (const ImportError&) {
        // A refusal is a good answer.
    }
    return 0;
}
