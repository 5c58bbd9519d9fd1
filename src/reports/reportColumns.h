#pragma once

#include "reports/reportDescription.h"

#include <array>

/// The columns of the reports, and beside each set the names of its boxes, by which the one to widen is
/// chosen.
namespace sets {

inline constexpr ReportColumn kSold[] = {
    {u"产品编号", u"产品编号", 20}, {u"品名", u"品名", 62},  {u"规格", u"规格", 94},  {u"产地", u"产地", 116},
    {u"厂家", u"厂家", 138},        {u"单价", u"单价", 160}, {u"数量", u"数量", 182}, {u"合计", u"合计", 204},
    {u"折扣", u"折扣", 216},        {u"实付", u"实付"},
};
// The names of the boxes are others than the labels: that is meant.
inline constexpr const char16_t* kSoldBoxes[] = {u"产品编号方框", u"品名方框",     u"规格方框",
                                                 u"产地方框",     u"厂家方框",     u"单价方框",
                                                 u"数量合方框",   u"合计金额方框", u"折价方框"};

inline constexpr ReportColumn kStock[] = {
    {u"日期", u"日期", 20},  {u"产品编号", u"产品编号", 62}, {u"品名", u"品名", 94},
    {u"规格", u"规格", 116}, {u"产地", u"产地", 138},        {u"厂家", u"厂家", 160},
    {u"单价", u"单价", 182}, {u"数量", u"数量", 204},        {u"成本", u"成本", 216},
    {u"折扣", u"折扣"},
};
inline constexpr const char16_t* kStockBoxes[] = {u"日期方框", u"产品编号方框", u"品名方框",
                                                  u"规格方框", u"产地方框",     u"厂家方框",
                                                  u"单价方框", u"数量方框",     u"成本方框"};

inline constexpr ReportColumn kContact[] = {
    {u"联系人", u"联系人", 15}, {u"电话", u"电话", 37},    {u"手机", u"手机", 59},
    {u"传真", u"传真", 81},     {u"Email", u"Email", 123}, {u"单位名称", u"单位名称", 175},
    {u"地址", u"地址", 227},    {u"邮编", u"邮政编码"},
};
inline constexpr const char16_t* kContactBoxes[] = {u"联系人方框", u"电话方框",     u"手机方框", u"传真方框",
                                                    u"Email方框",  u"单位名称方框", u"地址方框"};

inline constexpr ReportColumn kWorth[] = {
    {u"联系人", u"联系人", 15},      {u"电话", u"电话", 37},          {u"手机", u"手机", 59},
    {u"Email", u"Email", 101},       {u"单位名称", u"单位名称", 153}, {u"消费合计", u"消费合计", 205},
    {u"差额利润", u"差额利润", 223}, {u"购买数", u"购买数"},
};
// The last name is without the word for a box: that is meant.
inline constexpr const char16_t* kWorthBoxes[] = {u"联系人方框",   u"电话方框",     u"手机方框", u"Email方框",
                                                  u"单位名称方框", u"消费合计方框", u"差额利润"};

inline constexpr ReportColumn kTurnover[] = {
    {u"日期", u"日期", 30}, {u"营业额", u"营业额", 62}, {u"", u"", 94}, {u"", u""}};
inline constexpr const char16_t* kTurnoverBoxes[] = {u"日期方框", u"营业额方框", u"第三方框"};

inline constexpr ReportColumn kClerks[] = {
    {u"业务员编号", u"业务员编号", 40}, {u"营业额", u"营业额", 102}, {u"客户数", u"客户数"}};
inline constexpr const char16_t* kClerkBoxes[] = {u"业务员编号方框", u"营业额方框"};

inline constexpr ReportColumn kOrders[] = {{u"客户编号", u"客户编号", 30},
                                           {u"订单号", u"订单号", 62},
                                           {u"购买额", u"购买额", 94},
                                           {u"差额利润", u"差额利润", 126},
                                           {u"购买数量", u"购买数量"}};
inline constexpr const char16_t* kOrderBoxes[] = {u"客户编号方框", u"订单号方框", u"购买额方框",
                                                  u"差额利润方框"};

inline constexpr ReportColumn kPurchases[] = {{u"日期", u"日期", 30},
                                              {u"订单号", u"订单号", 62},
                                              {u"购物金额", u"购物金额", 94},
                                              {u"购物数", u"购物数"}};
inline constexpr const char16_t* kPurchaseBoxes[] = {u"日期方框", u"订单号方框", u"购物金额方框"};

inline constexpr ReportColumn kBirthdays[] = {{u"近期生日", u"近期生日", 24}, {u"天数", u"天数", 36},
                                              {u"单位名称", u"单位名称", 98}, {u"联系人", u"联系人", 122},
                                              {u"生日", u"生日", 152},        {u"电话", u"电话", 182},
                                              {u"手机", u"手机", 212},        {u"消费合计", u"消费合计"}};
inline constexpr const char16_t* kBirthdayBoxes[] = {
    u"近期生日方框", u"天数方框", u"单位名称方框", u"联系人方框", u"生日方框", u"电话方框", u"手机方框"};

inline constexpr ReportColumn kLapsed[] = {
    {u"最近购买", u"最近购买", 24},  {u"天数", u"天数", 36},      {u"单位名称", u"单位名称", 98},
    {u"联系人", u"联系人", 122},     {u"电话", u"电话", 152},     {u"手机", u"手机", 182},
    {u"消费合计", u"消费合计", 208}, {u"购买数", u"购买数", 226}, {u"业务员编号", u"业务员编号"}};
inline constexpr const char16_t* kLapsedBoxes[] = {u"最近购买方框", u"天数方框",  u"单位名称方框",
                                                   u"联系人方框",   u"电话方框",  u"手机方框",
                                                   u"消费合计方框", u"购买数方框"};

/// A group of customers with its number and its share.
constexpr std::array<ReportColumn, 3> groupColumns(const char16_t* group) {
    return {{{group, group, 80}, {u"数量", u"数量", 142}, {u"百分率", u"百分率"}}};
}
inline constexpr auto kIndustries = groupColumns(u"行业");
inline constexpr const char16_t* kIndustryBoxes[] = {u"行业方框", u"数量方框"};
inline constexpr auto kRegions = groupColumns(u"地区");
inline constexpr const char16_t* kRegionBoxes[] = {u"地区方框", u"数量方框"};

/// The columns that all movements of stock share, and the two that each has of its own.
constexpr std::array<ReportColumn, 10> movementColumns(const char16_t* ninth, const char16_t* tenth) {
    return {{{u"日期", u"日期", 20},
             {u"产品编号", u"产品编号", 62},
             {u"品名", u"品名", 94},
             {u"规格", u"规格", 116},
             {u"产地", u"产地", 138},
             {u"厂家", u"厂家", 160},
             {u"成本", u"成本", 182},
             {u"数量", u"数量", 204},
             {ninth, ninth, 225},
             {tenth, tenth}}};
}
constexpr std::array<const char16_t*, 9> movementBoxes(const char16_t* ninth) {
    return {u"日期方框", u"产品编号方框", u"品名方框", u"规格方框", u"产地方框",
            u"厂家方框", u"成本方框",     u"数量方框", ninth};
}
inline constexpr auto kCount = movementColumns(u"实物数", u"亏_盈");
inline constexpr auto kCountBoxes = movementBoxes(u"实物数方框");
inline constexpr auto kReturns = movementColumns(u"退货款", u"说明");
inline constexpr auto kReturnBoxes = movementBoxes(u"退货款方框");
inline constexpr auto kScrap = movementColumns(u"亏损金额", u"说明");
inline constexpr auto kScrapBoxes = movementBoxes(u"亏损金额方框");
inline constexpr auto kTransfers = movementColumns(u"合计金额", u"说明");
inline constexpr auto kTransferBoxes = movementBoxes(u"合计金额方框");

/// Sales line by line. Labels differ over the same two fields.
constexpr std::array<ReportColumn, 11> saleColumns(const char16_t* total, const char16_t* paid) {
    return {{{u"日期", u"日期", 20},
             {u"产品编号", u"产品编号", 38},
             {u"品名", u"品名", 70},
             {u"规格", u"规格", 100},
             {u"产地", u"产地", 132},
             {u"厂家", u"厂家", 162},
             {u"单价", u"单价", 180},
             {u"数量", u"数量", 192},
             {total, u"合计", 212},
             {u"折扣", u"折扣", 222},
             {paid, u"实付"}}};
}
inline constexpr auto kSales = saleColumns(u"合计", u"实收");
inline constexpr auto kOrderLines = saleColumns(u"合计", u"实付");
inline constexpr auto kClientLines = saleColumns(u"金额", u"实付");
inline constexpr const char16_t* kSaleBoxes[] = {u"日期方框", u"产品编号方框", u"品名方框", u"规格方框",
                                                 u"产地方框", u"厂家方框",     u"单价方框", u"数量方框",
                                                 u"合计方框", u"折扣方框"};

} // namespace sets
