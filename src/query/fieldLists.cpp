#include "query/fieldLists.h"

namespace {

struct FieldList {
    int code;
    const char16_t* fields;
};

// Some lists lack 厂家: they are as they stand.
constexpr FieldList kLists[] = {
    {1, u"日期 客户编号 联系人 单位名称 电话 传真 手机 Email 地址 邮政编码 业务员编号 客户级别"},
    {2, u"日期 客户编号 订单号 产品编号 品名 规格 产地 厂家"},
    {3, u"日期 产品编号 品名 规格 产地"},
    {15, u"日期 产品编号 品名 规格 产地"},
    {16, u"日期 产品编号 品名 规格 产地 厂家"},
    {17, u"日期 产品编号 品名 规格 产地 厂家"},
    {18, u"日期 产品编号 品名 规格 产地"},
    {19, u"日期 产品编号 品名 规格 产地 厂家"},
    {20, u"日期 产品编号 品名 规格 产地 厂家"},
    {21, u"日期 产品编号 品名 规格 产地 厂家"},
};

} // namespace

QStringList searchFields(int searchCode) {
    for (const FieldList& list : kLists)
        if (list.code == searchCode)
            return QString::fromUtf16(list.fields).split(u' ');
    return {};
}

QString searchCondition(const QString& field, const QString& value) {
    static const QStringList keys{QStringLiteral("客户编号"), QStringLiteral("产品编号"),
                                  QStringLiteral("业务员编号")};
    return keys.contains(field) ? field + QStringLiteral(" = '") + value + u'\''
                                : field + QStringLiteral(" Like '%") + value + QStringLiteral("%'");
}
