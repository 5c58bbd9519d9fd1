#include "shell/captionSort.h"

#include "controls/dataGrid.h"
#include "shell/toolbarTable.h"
#include "shell/viewHost.h"

void sortByCaptions(View& view, DataGrid& grid, ViewHost& host, std::function<bool()> prepare) {
    const ToolbarRow* row = toolbarRow(view.name());
    if (!row || !row->serves(ViewOperation::data_order))
        return;
    grid.sortByCaptions();
    QObject::connect(&grid, &DataGrid::sortAsked, &view,
                     [&host, prepare = std::move(prepare)](const QString& field, bool descending) {
                         host.session().sortDirection = descending ? 2 : 1;
                         if (prepare())
                             host.sortBy(field);
                     });
}
