// Fuzz target of the Excel reader: cmake -DSHOP_FUZZ=ON with clang, then run fuzz_xls on a copy of the
// samples.
#include "import/tableReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
        const auto reader = xlsReader(SourceFile(bytes));
        for (const QString& table : reader->tables()) {
            SourceRows rows;
            reader->read(table, rows);
            if (rows.cellCount() != std::size_t(rows.rowCount()) * std::size_t(rows.columns.size()))
                std::abort();
        }
    } catch (const ImportError&) {
        // A refusal is a good answer.
    }
    return 0;
}
