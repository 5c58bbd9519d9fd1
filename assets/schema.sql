-- The tables of an empty shop. Text lengths are in characters; the first column of most tables is a serial that
-- the data layer fills. Column order is the order in which grids show the columns.

-- Permanent tables.

CREATE TABLE "clientTable" (
    "流水号" INTEGER,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "联系人" TEXT(50) COLLATE NOCASE,
    "生日" TEXT(50) COLLATE NOCASE,
    "电话" TEXT(50) COLLATE NOCASE,
    "传真" TEXT(50) COLLATE NOCASE,
    "手机" TEXT(50) COLLATE NOCASE,
    "Email" TEXT(50) COLLATE NOCASE,
    "部门" TEXT(50) COLLATE NOCASE,
    "单位名称" TEXT(100) COLLATE NOCASE,
    "地址" TEXT(100) COLLATE NOCASE,
    "邮政编码" TEXT(50) COLLATE NOCASE,
    "地区" TEXT(50) COLLATE NOCASE,
    "行业" TEXT(50) COLLATE NOCASE,
    "消费合计" REAL,
    "购买数" REAL,
    "客户级别" TEXT(50) COLLATE NOCASE,
    "业务员编号" TEXT(20) COLLATE NOCASE,
    "差额利润" REAL,
    "差额利润率" TEXT(50) COLLATE NOCASE
);

CREATE TABLE "buyList" (
    "流水号" INTEGER,
    "订单号" TEXT(20) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "日期" DATETEXT,
    "品名" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "单价" REAL,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "合计" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "实付" REAL,
    "成本" REAL,
    "差额利润" REAL
);

CREATE TABLE "productTable" (
    "流水号" INTEGER,
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "成本" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "单价" REAL
);

CREATE TABLE "product_Bank" (
    "流水号" INTEGER,
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "成本" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "单价" REAL
);

CREATE TABLE "return_Bank" (
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "成本" REAL,
    "数量" REAL,
    "退货款" REAL,
    "说明" TEXT(100) COLLATE NOCASE
);

CREATE TABLE "out_of_Bank" (
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "成本" REAL,
    "数量" REAL,
    "合计金额" REAL,
    "说明" TEXT(100) COLLATE NOCASE
);

CREATE TABLE "no_use_Bank" (
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "成本" REAL,
    "数量" REAL,
    "亏损金额" REAL,
    "说明" TEXT(100) COLLATE NOCASE
);

CREATE TABLE "counterCode" (
    "counterNum" REAL,
    "counterNum2" REAL,
    "counterNum3" REAL
);

INSERT INTO "counterCode" VALUES (1001, 1001, 1001);

-- Work tables that are emptied and never dropped.

CREATE TABLE "saleTable" (
    "日期" TEXT(50) COLLATE NOCASE,
    "实收" REAL
);

CREATE TABLE "orderTable" (
    "订单号" TEXT(20) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "购买额" REAL,
    "差额利润" REAL,
    "购买数量" REAL
);

CREATE TABLE "buy_Frequence_Table" (
    "日期" TEXT(50) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "订单号" TEXT(20) COLLATE NOCASE
);

CREATE TABLE "month_Table" (
    "标题" TEXT(50) COLLATE NOCASE,
    "1" TEXT(50) COLLATE NOCASE,
    "2" TEXT(50) COLLATE NOCASE,
    "3" TEXT(50) COLLATE NOCASE,
    "4" TEXT(50) COLLATE NOCASE,
    "5" TEXT(50) COLLATE NOCASE,
    "6" TEXT(50) COLLATE NOCASE,
    "7" TEXT(50) COLLATE NOCASE,
    "8" TEXT(50) COLLATE NOCASE,
    "9" TEXT(50) COLLATE NOCASE,
    "10" TEXT(50) COLLATE NOCASE,
    "11" TEXT(50) COLLATE NOCASE,
    "12" TEXT(50) COLLATE NOCASE,
    "13" TEXT(50) COLLATE NOCASE,
    "14" TEXT(50) COLLATE NOCASE,
    "15" TEXT(50) COLLATE NOCASE,
    "16" TEXT(50) COLLATE NOCASE,
    "17" TEXT(50) COLLATE NOCASE,
    "18" TEXT(50) COLLATE NOCASE,
    "19" TEXT(50) COLLATE NOCASE,
    "20" TEXT(50) COLLATE NOCASE,
    "21" TEXT(50) COLLATE NOCASE,
    "22" TEXT(50) COLLATE NOCASE,
    "23" TEXT(50) COLLATE NOCASE,
    "24" TEXT(50) COLLATE NOCASE
);

CREATE TABLE "clientplaceTable" (
    "地区" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "百分率" TEXT(50) COLLATE NOCASE
);

CREATE TABLE "clientlineTable" (
    "行业" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "百分率" TEXT(50) COLLATE NOCASE
);

INSERT INTO "month_Table" VALUES ('客户数', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0');
INSERT INTO "month_Table" VALUES ('百分率', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0', '0');

-- Work copies: rebuilt by the program, here as empty tables of the right shape.

CREATE TABLE "stock_Count_Bank" (
    "流水号" INTEGER,
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "实物数" REAL,
    "亏_盈" TEXT(50) COLLATE NOCASE,
    "成本" REAL,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE
);

CREATE TABLE "buyList2" (
    "流水号" INTEGER,
    "订单号" TEXT(20) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "日期" DATETEXT,
    "品名" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "单价" REAL,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "合计" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "实付" REAL,
    "成本" REAL,
    "差额利润" REAL
);

CREATE TABLE "buyList3" (
    "流水号" INTEGER,
    "订单号" TEXT(20) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "日期" DATETEXT,
    "品名" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "单价" REAL,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "合计" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "实付" REAL,
    "成本" REAL,
    "差额利润" REAL
);

CREATE TABLE "tempTable2" (
    "流水号" INTEGER,
    "订单号" TEXT(20) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "日期" DATETEXT,
    "品名" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "单价" REAL,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "合计" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "实付" REAL,
    "成本" REAL,
    "差额利润" REAL
);

CREATE TABLE "clientTable2" (
    "流水号" INTEGER,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "联系人" TEXT(50) COLLATE NOCASE,
    "生日" TEXT(50) COLLATE NOCASE,
    "电话" TEXT(50) COLLATE NOCASE,
    "传真" TEXT(50) COLLATE NOCASE,
    "手机" TEXT(50) COLLATE NOCASE,
    "Email" TEXT(50) COLLATE NOCASE,
    "部门" TEXT(50) COLLATE NOCASE,
    "单位名称" TEXT(100) COLLATE NOCASE,
    "地址" TEXT(100) COLLATE NOCASE,
    "邮政编码" TEXT(50) COLLATE NOCASE,
    "地区" TEXT(50) COLLATE NOCASE,
    "行业" TEXT(50) COLLATE NOCASE,
    "消费合计" REAL,
    "购买数" REAL,
    "客户级别" TEXT(50) COLLATE NOCASE,
    "业务员编号" TEXT(20) COLLATE NOCASE,
    "差额利润" REAL,
    "差额利润率" TEXT(50) COLLATE NOCASE
);

CREATE TABLE "clientTable3" (
    "流水号" INTEGER,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "联系人" TEXT(50) COLLATE NOCASE,
    "生日" TEXT(50) COLLATE NOCASE,
    "电话" TEXT(50) COLLATE NOCASE,
    "传真" TEXT(50) COLLATE NOCASE,
    "手机" TEXT(50) COLLATE NOCASE,
    "Email" TEXT(50) COLLATE NOCASE,
    "部门" TEXT(50) COLLATE NOCASE,
    "单位名称" TEXT(100) COLLATE NOCASE,
    "地址" TEXT(100) COLLATE NOCASE,
    "邮政编码" TEXT(50) COLLATE NOCASE,
    "地区" TEXT(50) COLLATE NOCASE,
    "行业" TEXT(50) COLLATE NOCASE,
    "消费合计" REAL,
    "购买数" REAL,
    "客户级别" TEXT(50) COLLATE NOCASE,
    "业务员编号" TEXT(20) COLLATE NOCASE,
    "差额利润" REAL,
    "差额利润率" TEXT(50) COLLATE NOCASE
);

CREATE TABLE "productTable2" (
    "流水号" INTEGER,
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "成本" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "单价" REAL
);

CREATE TABLE "product_Bank2" (
    "流水号" INTEGER,
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "数量" REAL,
    "成本" REAL,
    "折扣" TEXT(50) COLLATE NOCASE,
    "单价" REAL
);

CREATE TABLE "return_Bank2" (
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "成本" REAL,
    "数量" REAL,
    "退货款" REAL,
    "说明" TEXT(100) COLLATE NOCASE
);

CREATE TABLE "no_use_Bank2" (
    "日期" DATETEXT,
    "产品编号" TEXT(20) COLLATE NOCASE,
    "品名" TEXT(50) COLLATE NOCASE,
    "规格" TEXT(50) COLLATE NOCASE,
    "产地" TEXT(50) COLLATE NOCASE,
    "厂家" TEXT(100) COLLATE NOCASE,
    "计量单位" TEXT(50) COLLATE NOCASE,
    "成本" REAL,
    "数量" REAL,
    "亏损金额" REAL,
    "说明" TEXT(100) COLLATE NOCASE
);

CREATE TABLE "buy_Frequence_Table2" (
    "日期" TEXT(50) COLLATE NOCASE,
    "客户编号" TEXT(20) COLLATE NOCASE,
    "购买次数" INTEGER
);
