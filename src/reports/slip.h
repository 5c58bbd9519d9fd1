#pragma once

#include "reports/reportDescription.h"

#include <vector>

enum class SlipPaper {
    Roll, // 80 mm wide, as long as the order
    A5,
};

/// The order in hand as a slip for its customer: what the shop says of itself, the order with its day and its
/// amount, and its lines, which stand on buyList.
class Slip {
public:
    Slip(SlipPaper paper, const Session& session);
    Slip(const Slip&) = delete;
    Slip& operator=(const Slip&) = delete;

    const ReportDescription& description() const { return m_description; }

private:
    std::vector<HeadItem> m_head;
    ReportDescription m_description;
};

/// What the shop says of itself at the head of a slip: the first lines of the text "小票抬头.txt" beside the
/// books, three at most; none where there is no such text.
QStringList shopLines(const Session& session);
