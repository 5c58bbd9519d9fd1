// Fuzz target: cmake -DSHOP_FUZZ=ON with clang, then run build/.../fuzz_texts for as long as wanted.
#include "support/fuzzTexts.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzText(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
