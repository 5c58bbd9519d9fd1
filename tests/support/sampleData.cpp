#include "support/sampleData.h"

#include "data/recount.h"
#include "data/schema.h"
#include "recordset/connection.h"
#include "recordset/textNumber.h"

#include <QDate>
#include <QStringList>

#include <cmath>
#include <random>

namespace {

const QStringList& surnames() {
    static const QStringList list =
        QStringLiteral(
            "王 李 张 刘 陈 杨 黄 赵 吴 周 徐 孙 马 朱 胡 郭 何 林 高 罗 郑 梁 谢 宋 唐 许 韩 冯 邓 曹")
            .split(u' ');
    return list;
}

const QStringList& givenNames() {
    static const QStringList list = QStringLiteral("伟 芳 娜 敏 静 丽 强 磊 军 洋 勇 艳 杰 娟 涛 明 超 秀英 "
                                                   "霞 平 刚 桂英 建国 志强 晓燕 文博 雨桐 子涵 海燕 国庆")
                                        .split(u' ');
    return list;
}

const QStringList& regions() {
    static const QStringList list =
        QStringLiteral("广东 浙江 江苏 上海 北京 山东 四川 湖北 福建 湖南 河南 河北 辽宁 安徽 陕西")
            .split(u' ');
    return list;
}

const QStringList& industries() {
    static const QStringList list =
        QStringLiteral("五金 餐饮 文教 建材 服装 电子 食品 物流 印刷 家具 医药 汽配").split(u' ');
    return list;
}

const QStringList& brands() {
    static const QStringList list =
        QStringLiteral("红松 东岳 蓝鲸 华星 飞燕 金桥 长河 天工 明月 青竹 福临 三江 玉泉 恒力 锦绣 南山")
            .split(u' ');
    return list;
}

const QStringList& goods() {
    static const QStringList list =
        QStringLiteral(
            "打印纸 硒鼓 键盘 鼠标 订书机 文件夹 签字笔 计算器 台灯 保温杯 插线板 电池 胶带 剪刀 墨盒 "
            "笔记本 白板 档案盒 便签纸 碎纸机 螺丝刀 扳手 电钻 卷尺 手套 安全帽 水泵 阀门 轴承 灯泡")
            .split(u' ');
    return list;
}

const QStringList& specs() {
    static const QStringList list =
        QStringLiteral("A4 B5 大号 中号 小号 标准 10只装 12支装 5米 3米 500克 1升 220V 24V 加厚").split(u' ');
    return list;
}

const QStringList& units() {
    static const QStringList list = QStringLiteral("包 支 个 只 台 盒 卷 把 套 箱").split(u' ');
    return list;
}

struct Product {
    QString number, name, spec, place, maker, unit;
    double cost = 0;
    double price = 0;
    double sold = 0;
    double out = 0;
};

class Maker {
public:
    Maker(const QString& path, const SampleSize& size)
        : m_size(size)
        , m_random(20041121)
        , m_sums(std::size_t(size.customers)) {
        createDatabase(path);
        m_connection = std::make_unique<Connection>(path);
    }

    void run() {
        makeProducts();
        WriteBatch batch(*m_connection);
        writeLines();
        writeMovements();
        writeStock();
        writeCustomers();
        m_connection->write(
            QStringLiteral("UPDATE counterCode SET counterNum = %1, counterNum2 = %2, counterNum3 = %3")
                .arg(1001 + m_size.customers)
                .arg(m_order)
                .arg(1001 + m_size.products));
        batch.finish();
    }

private:
    int below(int limit) { return int(m_random() % unsigned(limit)); }
    double unit() { return double(m_random() % 1'000'000) / 1'000'000; }
    /// An index below `limit`, small ones much more often: a few make most of the turnover.
    int skewed(int limit) { return std::min(limit - 1, int(limit * std::pow(unit(), 3))); }
    QString pick(const QStringList& list) { return list[below(int(list.size()))]; }
    QDate dayOf(int index, int count) const {
        return m_first.addDays(qint64(index) * (365LL * m_size.years - 1) / std::max(1, count));
    }

    /// A statement that inserts one row into a table, values in column order.
    class Inserter {
    public:
        Inserter(Connection& connection, const QString& table, int columns)
            : m_connection(connection)
            , m_statement(
                  connection.prepare(QStringLiteral("INSERT INTO %1 VALUES (%2)")
                                         .arg(table, QStringList(columns, QStringLiteral("?")).join(u',')))) {
        }
        void row(const std::vector<CellValue>& cells) {
            for (std::size_t i = 0; i < cells.size(); ++i)
                m_statement.bind(int(i) + 1, cells[i]);
            m_connection.write(m_statement);
        }

    private:
        Connection& m_connection;
        Statement m_statement;
    };

    void makeProducts() {
        for (int i = 0; i < m_size.products; ++i) {
            Product product;
            product.number = QString::number(1001 + i);
            product.name = brands()[i % brands().size()] + goods()[i / int(brands().size()) % goods().size()];
            product.spec = pick(specs());
            product.place = pick(regions());
            product.maker = product.place + product.name.left(2) + QStringLiteral("实业有限公司");
            product.unit = pick(units());
            product.cost = 0.25 * (4 + below(800));
            product.price = product.cost + 0.25 * (1 + below(int(product.cost * 2) + 2));
            m_products.push_back(product);
        }
    }

    void writeLines() {
        Inserter lines(*m_connection, QStringLiteral("buyList"), 17);
        static const double discounts[] = {100, 100, 100, 95, 90, 85, 80};
        int left = 0;
        int customer = 0;
        for (int i = 0; i < m_size.lines; ++i) {
            if (left-- == 0) {
                left = below(6);
                customer = skewed(m_size.customers);
                m_order += i > 0;
            }
            Product& product = m_products[std::size_t(skewed(m_size.products))];
            const double quantity = 1 + skewed(40);
            const double due = product.price * quantity;
            const double discount = discounts[below(7)];
            const double paid = discount * due / 100;
            const double margin = paid - product.cost * quantity;
            product.sold += quantity;
            m_sums[std::size_t(customer)].add(paid, margin, quantity);
            lines.row({qint32(i + 1), QString::number(m_order), QString::number(1001 + customer),
                       product.number, Moment::fromDate(dayOf(i, m_size.lines)), product.name, product.place,
                       product.spec, product.maker, product.price, product.unit, quantity, due,
                       plainNumber(discount), paid, product.cost, margin});
        }
        ++m_order;
    }

    void writeMovements() {
        writeMovement(QStringLiteral("return_Bank"), QStringLiteral("质量问题，退回厂家"));
        writeMovement(QStringLiteral("out_of_Bank"), QStringLiteral("调拨到二店"));
        writeMovement(QStringLiteral("no_use_Bank"), QStringLiteral("破损报废"));
    }

    void writeMovement(const QString& table, const QString& remark) {
        Inserter rows(*m_connection, table, 11);
        const int count = std::min(500, m_size.lines / 400);
        for (int i = 0; i < count; ++i) {
            Product& product = m_products[std::size_t(below(m_size.products))];
            const double quantity = 1 + below(5);
            product.out += quantity;
            rows.row({Moment::fromDate(dayOf(i, count)), product.number, product.name, product.spec,
                      product.place, product.maker, product.unit, product.cost, quantity,
                      product.cost * quantity, remark});
        }
    }

    void writeStock() {
        Inserter stock(*m_connection, QStringLiteral("productTable"), 12);
        Inserter history(*m_connection, QStringLiteral("product_Bank"), 12);
        qint32 serial = 0;
        for (std::size_t i = 0; i < m_products.size(); ++i) {
            const Product& product = m_products[i];
            // A few products stand at or below the safety stock.
            const double left = i % 25 == 7 ? below(3) : 5 + below(200);
            const double received = product.sold + product.out + left;
            const int deliveries = 1 + below(4);
            for (int d = 0; d < deliveries; ++d) {
                const double rest = received - std::floor(received / deliveries) * (deliveries - 1);
                const double part = d == 0 ? rest : std::floor(received / deliveries);
                history.row(productRow(product, ++serial, dayOf(d, deliveries), part));
            }
            stock.row(productRow(product, qint32(i + 1), dayOf(int(i), m_size.products), left));
        }
    }

    static std::vector<CellValue> productRow(const Product& product, qint32 serial, const QDate& date,
                                             double quantity) {
        return {serial,       Moment::fromDate(date), product.number,        product.name,
                product.spec, product.place,          product.maker,         product.unit,
                quantity,     product.cost,           QStringLiteral("100"), product.price};
    }

    void writeCustomers() {
        Inserter customers(*m_connection, QStringLiteral("clientTable"), 20);
        static const QStringList levels{QStringLiteral("重点"), QStringLiteral("普通"),
                                        QStringLiteral("一般")};
        for (int i = 0; i < m_size.customers; ++i) {
            const QString region = pick(regions());
            const QString industry = pick(industries());
            const LineSums& sums = m_sums[std::size_t(i)];
            const bool paid = sums.paid != 0;
            customers.row(
                {qint32(i + 1),
                 QString::number(1001 + i),
                 QString(pick(surnames()) + pick(givenNames())),
                 QStringLiteral("%1-%2-%3").arg(1955 + below(45)).arg(1 + below(12)).arg(1 + below(28)),
                 QStringLiteral("0%1-%2").arg(20 + below(80)).arg(60000000 + below(29999999)),
                 QString(),
                 QStringLiteral("13%1").arg(100000000 + below(899999999)),
                 QStringLiteral("kh%1@example.cn").arg(1001 + i),
                 i % 3 == 0 ? QStringLiteral("采购部") : QStringLiteral("办公室"),
                 QString(region + pick(brands()) + QString::number(i % 97) + industry +
                         QStringLiteral("商行")),
                 QStringLiteral("%1省人民路%2号").arg(region).arg(1 + below(900)),
                 QString::number(100000 + below(699999)),
                 region,
                 industry,
                 sums.paid,
                 sums.quantity,
                 levels[i < m_size.customers / 20 ? 0 : 1 + i % 2],
                 QStringLiteral("Y%1").arg(1 + below(m_size.salespeople), 2, 10, QChar(u'0')),
                 sums.margin,
                 paid ? rateText(marginRate(sums)) + u'%' : QStringLiteral("0")});
        }
    }

    SampleSize m_size;
    std::mt19937 m_random;
    std::unique_ptr<Connection> m_connection;
    std::vector<Product> m_products;
    std::vector<LineSums> m_sums;
    QDate m_first{2020, 1, 1};
    int m_order = 1001;
};

} // namespace

void makeSample(const QString& path, const SampleSize& size) {
    Maker(path, size).run();
}
