// Fuzz target of the text reader: cmake -DSHOP_FUZZ=ON with clang, then run fuzz_text on a copy of the
// samples.
#include "import/textReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const SourceRows rows = parseDelimited(decodeText(bytes));
    const std::size_t width = std::size_t(rows.columns.size());
    if (width == 0 ? !rows.cells.empty() : rows.cells.size() % width != 0)
        std::abort();
    return 0;
}
