#pragma once

#include "app/startUp.h"
#include "app/totalsJob.h"
#include "shell/MDIForm1.h"

/// Opens the shop with the customers' totals right before anybody looks.
inline void startAtOnce(MDIForm1& main) {
    startShop(main);
    TotalsJob totals(main.host().session());
    totals.onEnd = [&main](int changed) { tellRecounted(main, changed); };
    totals.onFailure = [&main](const QString& why) { tellNotRecounted(main, why); };
    totals.finish();
}
