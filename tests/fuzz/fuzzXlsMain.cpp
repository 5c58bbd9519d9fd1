// Fuzz target of the Excel reader: cmake -DSHOP_FUZZ=ON with clang, then run fuzz_xls on a copy of the
// samples.
#include "import/importSource.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto source = openXlsBytes(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
        for (const QString& table : source->tables()) {
            const SourceRows rows = source->read(table);
            const std::size_t width = std::size_t(rows.columns.size());
            if (width == 0 ? !rows.cells.empty() : rows.cells.size() % width != 0)
                std::abort();
        }
    } catch (const ImportError&) {
        // A refusal is a good answer.
    }
    return 0;
}
