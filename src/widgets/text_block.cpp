// widgets/text_block.cpp — reads tab-separated text.
#include "widgets/text_block.h"

namespace orvan {

std::vector<QStringList> readTextBlock(const QString& text) {
    std::vector<QStringList> rows;
    QStringList row;
    QString cell;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar letter = text[i];
        if (quoted) {
            if (letter != u'"') {
                cell += letter;
            } else if (i + 1 < text.size() && text[i + 1] == u'"') {
                cell += letter;
                ++i;
            } else {
                quoted = false;
            }
        } else if (letter == u'"' && cell.isEmpty() && text.indexOf(u'"', i + 1) > i) {
            quoted = true;
        } else if (letter == u'\t') {
            row << std::exchange(cell, {});
        } else if (letter == u'\n' || letter == u'\r') {
            if (letter == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            row << std::exchange(cell, {});
            rows.push_back(std::exchange(row, {}));
        } else {
            cell += letter;
        }
    }
    if (!cell.isEmpty() || !row.isEmpty()) {
        row << cell;
        rows.push_back(row);
    }
    return rows;
}

} // namespace orvan
