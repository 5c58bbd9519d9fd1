#pragma once

#include <QString>

/// A box whose text cannot stand, and the message for it.
struct BoxFault {
    int box = 0;
    QString message;
};
