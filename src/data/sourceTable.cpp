#include "data/sourceTable.h"

namespace {

constexpr bool yes = true;
constexpr bool no = false;

constexpr SourceRow kSources[] = {
    {1, &Session::clientTable, yes, yes},    {2, &Session::buyList, yes, yes},
    {3, &Session::productTable, yes, yes},   {4, &Session::productTable2, yes, yes},
    {5, &Session::productClients, yes, yes}, {6, &Session::tempTable2, yes, yes},
    {7, &Session::clientTable2, yes, yes},   {8, &Session::clientTable3, yes, yes},
    {9, &Session::buyList2, yes, yes},       {11, &Session::clerkTotals, no, yes},
    {12, &Session::clerkTotals, no, yes},    {15, &Session::product_Bank, yes, yes},
    {16, &Session::product_Bank2, yes, yes}, {17, &Session::stock_Count_Bank, yes, yes},
    {18, &Session::return_Bank, yes, yes},   {19, &Session::return_Bank2, yes, yes},
    {20, &Session::no_use_Bank, yes, yes},   {21, &Session::no_use_Bank2, yes, yes},
    {22, &Session::clerkClients, yes, yes},  {23, &Session::out_of_Bank, no, no},
    {24, &Session::out_of_Bank2, no, no},
};

} // namespace

std::span<const SourceRow> sourceTable() {
    return kSources;
}

const SourceRow* sourceRow(int code) {
    for (const SourceRow& row : kSources)
        if (row.code == code)
            return &row;
    return nullptr;
}

RecordsetPtr* sourceCursor(Session& session, int code) {
    const SourceRow* row = sourceRow(code);
    return row ? &(session.*row->cursor) : nullptr;
}

int searchCodeOf(int code) {
    switch (code) {
    case 7:
    case 8:
    case 22:
        return 1;
    case 9:
        return 2;
    case 4:
        return 3;
    default:
        return code;
    }
}
