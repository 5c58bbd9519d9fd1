#include "reports/reportLayout.h"

#include "recordset/textNumber.h"

void ReportLayout::move(ReportPart part, double right, double down) {
    switch (part) {
    case ReportPart::Table:
        tableLeft += right;
        tableTop += down;
        return;
    case ReportPart::Title:
        titleShift = wideTitleShift ? float(titleShift + right) : toInt16(titleShift + right);
        titleTop += down;
        return;
    case ReportPart::Head:
        for (double& left : headLeft)
            left += right;
        for (double& top : headTop)
            top += down;
    }
}
