#include "support/readerSwitch.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

void setReaderAttached(bool attached) {
    // QAccessible::setActive() tells observers alone; whether a reader is there is the platform's to say.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(attached);
}
