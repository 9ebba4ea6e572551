// widgets/list_print.cpp — lays a list out on pages and paints them.
#include "widgets/list_print.h"

#include "widgets/printed_pages.h"

#include <algorithm>
#include <numeric>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>

namespace orvan {

namespace {

constexpr double kFontPoints = 9;
constexpr double kSmallestPoints = 7;
constexpr double kMostSpread = 1.4;
constexpr double kSlack = 1.02;       // of a text's width: painters round letters in their own way
constexpr double kCellPadding = 0.35; // of the font's height, left and right of a cell's text

constexpr int kCellFlags = Qt::TextWordWrap | Qt::TextWrapAnywhere | Qt::AlignTop;

int flagsOf(ListKind kind) {
    return kCellFlags |
           (kind == ListKind::Number || kind == ListKind::Money ? Qt::AlignRight : Qt::AlignLeft);
}

// Rows first .. last-1 of the list on one page.
struct PageRows {
    size_t first = 0;
    size_t last = 0; // not included
};

// Where everything goes; made once for a painter, then painted page by page.
class ListPages final : public PrintedPages {
  public:
    ListPages(const ListSheet& sheet, QPainter& painter, QRectF area)
        : sheet_(sheet), painter_(painter), area_(area) {
        chooseWidths();
        splitPages();
    }

    int count() const override { return static_cast<int>(pages_.size()); }

    void paint(int page) override {
        double top = area_.top() + paintHeading();
        paintHeader(top);
        top += headerHeight_;
        painter_.setFont(font_);
        for (size_t row = pages_[page].first; row < pages_[page].last; ++row) {
            paintRow(sheet_.rows[row], top, rowHeights_[row]);
            top += rowHeights_[row];
        }
        if (sheet_.rows.empty())
            painter_.drawText(QRectF(area_.left(), top + lineHeight_, area_.width(), lineHeight_),
                              Qt::AlignHCenter, QStringLiteral("Listede kayıt yok."));
        const QString foot = QStringLiteral("Sayfa %1 / %2").arg(page + 1).arg(count());
        painter_.drawText(QRectF(area_.left(), area_.bottom() - lineHeight_, area_.width(), lineHeight_),
                          Qt::AlignRight | Qt::AlignBottom, foot);
    }

    // The width all columns want at the usual font, in the painter's units.
    static double wantedWidth(const ListSheet& sheet, const QFontMetricsF& usual, const QFontMetricsF& bold) {
        const auto widths = wantedWidths(sheet, usual, bold);
        return std::accumulate(widths.begin(), widths.end(), 0.0);
    }

    static QFont fontOf(double points, bool bold = false) {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(points);
        font.setBold(bold);
        return font;
    }

  private:
    static std::vector<double> wantedWidths(const ListSheet& sheet, const QFontMetricsF& usual,
                                            const QFontMetricsF& bold) {
        std::vector<double> widths;
        for (size_t column = 0; column < sheet.columns.size(); ++column) {
            double width = bold.horizontalAdvance(sheet.columns[column].title);
            for (const ListRow& row : sheet.rows)
                width = std::max(width,
                                 usual.horizontalAdvance(cellText(row[column], sheet.columns[column].kind)));
            widths.push_back(width * kSlack + 2 * kCellPadding * usual.height() + 1);
        }
        return widths;
    }

    QFontMetricsF metrics(const QFont& font) const { return QFontMetricsF(font, painter_.device()); }

    void chooseWidths() {
        double points = kFontPoints;
        for (;; points -= 0.5) {
            font_ = fontOf(points);
            boldFont_ = fontOf(points, true);
            widths_ = wantedWidths(sheet_, metrics(font_), metrics(boldFont_));
            if (total() <= area_.width() || points <= kSmallestPoints) break;
        }
        lineHeight_ = metrics(font_).height();
        padding_ = kCellPadding * lineHeight_;
        if (total() > area_.width())
            narrow();
        else
            widen();
    }

    double total() const { return std::accumulate(widths_.begin(), widths_.end(), 0.0); }

    // A list that leaves room is spread over the page, but not torn apart.
    void widen() {
        const double factor = std::min(kMostSpread, area_.width() / total());
        for (double& width : widths_)
            width *= factor;
    }

    // Takes the missing width from the widest columns: none is made narrower than an equal share.
    void narrow() {
        double low = 0, high = area_.width();
        for (int step = 0; step < 40; ++step) {
            const double cap = (low + high) / 2;
            double sum = 0;
            for (const double width : widths_)
                sum += std::min(width, cap);
            (sum <= area_.width() ? low : high) = cap;
        }
        for (double& width : widths_)
            width = std::min(width, low);
    }

    double textHeight(const QString& text, double width, ListKind kind, const QFont& font) const {
        if (text.isEmpty()) return lineHeight_;
        return metrics(font)
            .boundingRect(QRectF(0, 0, width - 2 * padding_, area_.height() * 100), flagsOf(kind), text)
            .height();
    }

    void splitPages() {
        headerHeight_ = 0;
        for (size_t column = 0; column < sheet_.columns.size(); ++column) {
            const ListColumn& heading = sheet_.columns[column];
            headerHeight_ =
                std::max(headerHeight_, textHeight(heading.title, widths_[column], heading.kind, boldFont_));
        }
        headerHeight_ += padding_;
        const double room = area_.height() - headingHeight() - headerHeight_ - 2 * lineHeight_;
        double used = 0;
        PageRows page;
        for (size_t row = 0; row < sheet_.rows.size(); ++row) {
            double height = lineHeight_;
            for (size_t column = 0; column < sheet_.columns.size(); ++column) {
                const ListKind kind = sheet_.columns[column].kind;
                height = std::max(height, textHeight(cellText(sheet_.rows[row][column], kind),
                                                     widths_[column], kind, font_));
            }
            height = std::min(height + padding_ / 2, room);
            rowHeights_.push_back(height);
            if (used + height > room) {
                pages_.push_back(page);
                page.first = row;
                used = 0;
            }
            used += height;
            page.last = row + 1;
        }
        pages_.push_back(page);
    }

    double headingHeight() const {
        return metrics(fontOf(12, true)).height() + static_cast<double>(sheet_.notes.size()) * lineHeight_ +
               padding_;
    }

    double paintHeading() {
        painter_.setFont(fontOf(12, true));
        const double titleHeight = metrics(painter_.font()).height();
        painter_.drawText(QRectF(area_.left(), area_.top(), area_.width(), titleHeight), Qt::AlignHCenter,
                          sheet_.title);
        painter_.setFont(font_);
        double top = area_.top() + titleHeight;
        for (const QString& note : sheet_.notes) {
            painter_.drawText(QRectF(area_.left(), top, area_.width(), lineHeight_), Qt::AlignHCenter, note);
            top += lineHeight_;
        }
        return headingHeight();
    }

    void paintHeader(double top) {
        painter_.setFont(boldFont_);
        double left = area_.left();
        for (size_t column = 0; column < sheet_.columns.size(); ++column) {
            const QRectF box(left + padding_, top, widths_[column] - 2 * padding_, headerHeight_);
            painter_.drawText(box, flagsOf(sheet_.columns[column].kind), sheet_.columns[column].title);
            left += widths_[column];
        }
        painter_.setPen(QPen(Qt::black, lineHeight_ / 16));
        painter_.drawLine(QPointF(area_.left(), top + headerHeight_ - padding_ / 2),
                          QPointF(left, top + headerHeight_ - padding_ / 2));
    }

    void paintRow(const ListRow& row, double top, double height) {
        double left = area_.left();
        for (size_t column = 0; column < sheet_.columns.size(); ++column) {
            const ListKind kind = sheet_.columns[column].kind;
            const QRectF box(left + padding_, top, widths_[column] - 2 * padding_, height);
            painter_.drawText(box, flagsOf(kind), cellText(row[column], kind));
            left += widths_[column];
        }
    }

    const ListSheet& sheet_;
    QPainter& painter_;
    QRectF area_;
    QFont font_, boldFont_;
    std::vector<double> widths_, rowHeights_;
    std::vector<PageRows> pages_;
    double headerHeight_ = 0, lineHeight_ = 0, padding_ = 0;
};

PrintJob jobOf(const ListSheet& sheet) {
    return {sheet.title,
            [&sheet](QPrinter& printer) {
                const QFontMetricsF usual(ListPages::fontOf(kFontPoints), &printer);
                const QFontMetricsF bold(ListPages::fontOf(kFontPoints, true), &printer);
                if (ListPages::wantedWidth(sheet, usual, bold) >
                    printer.pageRect(QPrinter::DevicePixel).width())
                    printer.setPageOrientation(QPageLayout::Landscape);
            },
            [&sheet](QPainter& painter, const QRectF& area) {
                return std::make_unique<ListPages>(sheet, painter, area);
            }};
}

} // namespace

void choosePage(const ListSheet& sheet, QPrinter& printer) { choosePaper(jobOf(sheet), printer); }
int printList(const ListSheet& sheet, QPrinter& printer) { return printPages(jobOf(sheet), printer); }
void writePdf(const ListSheet& sheet, const QString& path) { writePdf(jobOf(sheet), path); }
void previewList(const ListSheet& sheet, QWidget* parent, UserMemory& memory) {
    previewPages(jobOf(sheet), parent, memory);
}

} // namespace orvan
