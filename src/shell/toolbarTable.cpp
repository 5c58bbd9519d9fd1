#include "shell/toolbarTable.h"

#include "shell/MDIForm1.h"

namespace {

constexpr bool yes = true;
constexpr bool no = false;

constexpr ToolbarRow kTable[] = {
    {u"userInfoFm1", {yes, yes, yes, yes, yes}},
    {u"stock_BankFm1", {yes, yes, yes, yes, yes}},
    {u"statisticFm2", {yes, yes, yes, yes, yes}},
    {u"stockFm1", {yes, yes, yes, yes, yes}},
    {u"stock_ReturnFm2", {yes, yes, yes, yes, yes}},
    {u"stock_out_of_BankFm2", {yes, yes, yes, yes, yes}},
    {u"stock_no_use_BankFm2", {yes, yes, yes, yes, yes}},
    {u"statisticFm1", {yes, no, yes, yes, yes}},
    {u"statisticFm3", {yes, no, yes, yes, yes}},
    {u"stock_CountFm1", {no, yes, yes, yes, yes}},
    {u"userInfoFm2", {no, yes, yes, yes, yes}},
    {u"userInfoFm3", {no, yes, yes, yes, yes}},
    {u"maintainFm1", {no, no, yes, yes, no}},
    {u"maintainFm2", {no, no, yes, yes, no}},
    {u"maintainFm3", {no, no, yes, yes, no}},
    {u"tempTable2Fm2", {no, no, no, yes, yes}},
    {u"tempTable2Fm22", {no, no, no, yes, yes}},
    {u"stock_ReturnFm1", {no, no, no, yes, no}},
    {u"stock_out_of_BankFm1", {no, no, no, yes, no}},
    {u"stock_no_use_BankFm1", {no, no, no, yes, no}},
    {u"goodsSalesFm2", {no, no, no, no, yes}},
    {u"tempTable1Fm1", {no, no, no, no, yes}},
    {u"stockFm2", {no, no, no, no, yes}},
    {u"tempTable3Fm3", {no, no, no, no, yes}},
    {u"saleroom_statistic", {no, no, no, no, yes}},
    {u"dataInputFm1", {no, no, no, no, no}},
    {u"paybackFm1", {no, no, no, no, no}},
    {u"productRegisterFm1", {no, no, no, no, no}},
    {u"buy_FrequenceFm1", {no, no, no, no, no}},
};

constexpr ToolbarButton kButtons[] = {
    {2, u"统计时间", u"time", u"Ctrl+T", ViewOperation::Time_AA,
     [](MDIForm1& main) { main.statistic_Time(); }},
    {3, u"查询", u"search", u"Ctrl+F", ViewOperation::data_search, [](MDIForm1& main) { main.search_A(); }},
    {4, u"全库显示", u"whole", u"F5", ViewOperation::data_whole_show, [](MDIForm1& main) { main.show_A(); }},
    {5, u"顺序排序", u"ascending", u"Ctrl+Up", ViewOperation::data_order,
     [](MDIForm1& main) { main.order_A(1); }},
    {6, u"倒序排序", u"descending", u"Ctrl+Down", ViewOperation::data_order,
     [](MDIForm1& main) { main.order_A(2); }},
    {7, u"打印", u"print", u"Ctrl+P", ViewOperation::data_print, [](MDIForm1& main) { main.print_A(); }},
    {8, u"帮助", u"help", u"F1", {}, [](MDIForm1& main) { main.showHelp(); }},
    {9, u"退出", u"exit", u"Ctrl+Q", {}, [](MDIForm1& main) { main.askExit(); }},
};

} // namespace

std::span<const ToolbarRow> toolbarTable() {
    return kTable;
}

const ToolbarRow* toolbarRow(QStringView view) {
    for (const ToolbarRow& row : kTable)
        if (row.view.compare(view, Qt::CaseInsensitive) == 0)
            return &row;
    return nullptr;
}

std::span<const ToolbarButton> toolbarButtons() {
    return kButtons;
}
