// records/screens/register_print.cpp — see register_print.h.
#include "records/screens/register_print.h"

#include "widgets/printed_pages.h"

#include <algorithm>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

namespace orvan {

namespace {

QFont fontOf(double points, bool bold) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

class RegisterPages final : public PrintedPages {
  public:
    RegisterPages(const RegisterSheet& sheet, QPainter& painter, const QRectF& area)
        : sheet_(sheet), painter_(painter), area_(area), font_(fontOf(7.5, false)), bold_(fontOf(7.5, true)),
          title_(fontOf(12, true)) {
        lineHeight_ = metrics(font_).lineSpacing();
        padding_ = lineHeight_ / 2;
        labelWidth_ = metrics(font_).horizontalAdvance(QStringLiteral("Belge sayısı, tarihi: "));
        breakPages();
    }

    int count() const override { return static_cast<int>(pages_.size()); }

    void paint(int page) override {
        const Page& about = pages_[static_cast<size_t>(page)];
        double top = area_.top() + paintHeading();
        for (size_t i = about.first; i < about.last; ++i) {
            paintBlock(sheet_.entries[i], top, heights_[i]);
            top += heights_[i] + padding_;
        }
        painter_.setFont(font_);
        painter_.drawText(QRectF(area_.left(), area_.bottom() - lineHeight_, area_.width(), lineHeight_),
                          Qt::AlignRight, QStringLiteral("Sayfa %1 / %2").arg(page + 1).arg(count()));
    }

  private:
    struct Page {
        size_t first = 0, last = 0; // last not included
    };

    QFontMetricsF metrics(const QFont& font) const { return QFontMetricsF(font, painter_.device()); }
    double columnWidth(size_t columns) const {
        return (area_.width() - 2 * padding_) / static_cast<double>(columns);
    }
    double textWidth(size_t columns) const { return columnWidth(columns) - labelWidth_ - padding_; }

    // Breaks between words; inside one only where it is wider than the column.
    int wrapping(const QString& text, size_t columns) const {
        for (const QString& word : text.split(QLatin1Char(' ')))
            if (metrics(font_).horizontalAdvance(word) > textWidth(columns)) return Qt::TextWrapAnywhere;
        return Qt::TextWordWrap;
    }

    double lineHeight(const QString& text, size_t columns) const {
        const QRectF box(0, 0, textWidth(columns), 1e6);
        return std::max(lineHeight_,
                        metrics(font_).boundingRect(box, wrapping(text, columns), text).height());
    }

    double blockHeight(const RegisterEntry& entry) const {
        double tallest = 0;
        for (const auto& column : entry.columns) {
            double height = 0;
            for (const RegisterLine& line : column)
                height += lineHeight(line.text, entry.columns.size());
            tallest = std::max(tallest, height);
        }
        return tallest + lineHeight_ * 2 + padding_;
    }

    void breakPages() {
        const double room = area_.height() - headingHeight() - 2 * lineHeight_;
        Page page;
        double used = 0;
        for (size_t i = 0; i < sheet_.entries.size(); ++i) {
            heights_.push_back(std::min(blockHeight(sheet_.entries[i]), room));
            if (i > page.first && used + heights_[i] > room) {
                pages_.push_back(page);
                page.first = i;
                used = 0;
            }
            used += heights_[i] + padding_;
            page.last = i + 1;
        }
        pages_.push_back(page);
    }

    double headingHeight() const {
        return metrics(title_).height() + static_cast<double>(sheet_.notes.size()) * lineHeight_ + padding_;
    }

    double paintHeading() {
        painter_.setFont(title_);
        const double height = metrics(title_).height();
        painter_.drawText(QRectF(area_.left(), area_.top(), area_.width(), height), Qt::AlignHCenter,
                          sheet_.title);
        painter_.setFont(font_);
        double top = area_.top() + height;
        for (const QString& note : sheet_.notes) {
            painter_.drawText(QRectF(area_.left(), top, area_.width(), lineHeight_), Qt::AlignHCenter, note);
            top += lineHeight_;
        }
        return headingHeight();
    }

    void paintBlock(const RegisterEntry& entry, double top, double height) {
        painter_.setPen(QPen(Qt::black, lineHeight_ / 20));
        painter_.drawRect(QRectF(area_.left(), top, area_.width(), height));
        painter_.setFont(bold_);
        painter_.drawText(
            QRectF(area_.left() + padding_, top + padding_ / 2, area_.width() - 2 * padding_, lineHeight_),
            Qt::AlignLeft, entry.number + QStringLiteral("   ") + entry.name);
        const double under = top + lineHeight_ + padding_ * 3 / 4;
        painter_.drawLine(QPointF(area_.left(), under), QPointF(area_.right(), under));
        double left = area_.left() + padding_;
        for (const auto& column : entry.columns) {
            double at = under + padding_ / 2;
            for (const RegisterLine& line : column) {
                const double lines = lineHeight(line.text, entry.columns.size());
                painter_.setFont(font_);
                painter_.drawText(QRectF(left, at, labelWidth_, lineHeight_), Qt::AlignLeft,
                                  line.label + QLatin1Char(':'));
                painter_.drawText(QRectF(left + labelWidth_, at, textWidth(entry.columns.size()), lines),
                                  Qt::AlignLeft | wrapping(line.text, entry.columns.size()), line.text);
                at += lines;
            }
            left += columnWidth(entry.columns.size());
        }
    }

    const RegisterSheet& sheet_;
    QPainter& painter_;
    QRectF area_;
    QFont font_, bold_, title_;
    std::vector<double> heights_;
    std::vector<Page> pages_;
    double lineHeight_ = 0, padding_ = 0, labelWidth_ = 0;
};

PrintJob jobOf(const RegisterSheet& sheet) {
    return {sheet.title, {}, [&sheet](QPainter& painter, const QRectF& area) {
                return std::make_unique<RegisterPages>(sheet, painter, area);
            }};
}

} // namespace

int printRegister(const RegisterSheet& sheet, QPrinter& printer) { return printPages(jobOf(sheet), printer); }
void writeRegisterPdf(const RegisterSheet& sheet, const QString& path) { writePdf(jobOf(sheet), path); }
void previewRegister(const RegisterSheet& sheet, QWidget* parent, UserMemory& memory) {
    previewPages(jobOf(sheet), parent, memory);
}

} // namespace orvan
