// hengshanghui-reader KIND [MEMOS]: reads the foreign file that is open as descriptor 3, and the memo file
// beside it as descriptor 4, behind walls, for the program that started it; it tells the tables of the file,
// and then the columns and rows of each table that it is asked for by a line with its name. It may die or
// fall silent on a damaged file; then the file cannot be read. hengshanghui-reader --walls: ends with 0 where
// the kernel has such walls.
#include "import/tableServer.h"
#include "import/walls.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace {

constexpr int kFile = 3;
constexpr int kMemos = 4;
constexpr std::uint64_t kMostMemory = std::uint64_t(4) << 30; // bytes

std::unique_ptr<TableReader> readerOf(std::string_view kind, std::string_view memos) {
    const SourceFile file(kFile);
    if (kind == "txt")
        return textReader(file);
    if (kind == "xls")
        return xlsReader(file);
    if (kind == "mdb")
        return mdbReader(file);
    if (kind == "xlsx")
        return xlsxReader(file);
    if (kind != "dbf")
        throw ImportError(QStringLiteral("没有这种文件的读取程序。"));
    return dbfReader(file, memos.empty() ? std::nullopt
                                         : std::optional(MemoFile{SourceFile(kMemos), memos == "fpt"}));
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view kind = argc > 1 ? argv[1] : "";
    const std::string_view memos = argc > 2 ? argv[2] : "";
    // Behind the walls nothing can be fetched any more.
    loadTextConverters();
    if (kind == "mdb")
        loadMdbConverters(SourceFile(kFile));
    const bool stand = raiseWalls(kMostMemory);
    if (kind == "--walls")
        std::_Exit(stand ? 0 : 1);
    serveTables([&] { return readerOf(kind, memos); }, STDIN_FILENO, STDOUT_FILENO);
    std::_Exit(0); // tidying up needs more than the walls leave
}
