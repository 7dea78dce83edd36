#pragma once

#include <QString>

#include <functional>

namespace tarvessa {

class Grid;

/// Lets the operator save the grid as an XLSX or a CSV file: asks for the file, writes it as the grid stands
/// (every row, the columns that are output) and tells where it is. `name`, asked for each time, is the file
/// name proposed, without suffix; the folder is the one last used since the program began. A file that cannot
/// be written is reported.
void offerSaving(Grid* grid, std::function<QString()> name);

} // namespace tarvessa
