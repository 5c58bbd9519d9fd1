#pragma once

#include <functional>

class DataGrid;
class View;
class ViewHost;

/// Where the toolbar sorts this view, a click on a caption of its grid does so too, by the sort dialog's own
/// road and without the dialog. `prepare` makes ready for that dialog, and says whether there is anything to
/// sort.
void sortByCaptions(View& view, DataGrid& grid, ViewHost& host, std::function<bool()> prepare);
