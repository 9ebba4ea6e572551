// widgets/text_block.h — a block of cells as the tab-separated text that spreadsheets put on the clipboard.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace orvan {

// Rows of cells. A quoted cell may hold tabs, line ends and doubled quotes; the line end of the last row ends
// nothing new.
std::vector<QStringList> readTextBlock(const QString& text);

} // namespace orvan
