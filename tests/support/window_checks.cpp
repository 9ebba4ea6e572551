// tests/support/window_checks.cpp — the checks of a window.
#include "support/window_checks.h"

#include <algorithm>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace orvan_test {

namespace {

constexpr int kMostControls = 300;

QString nameOf(const QWidget* widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const auto* label = qobject_cast<const QLabel*>(widget);
    const QString words = button ? button->text() : label ? label->text() : widget->accessibleName();
    return QStringLiteral("%1 \"%2\" (%3)")
        .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(), words);
}

// A part of another control: the line of a list, the button in a field, a header, a scroll bar.
bool isInner(const QWidget* widget, const QWidget& window) {
    for (const QWidget* at = widget->parentWidget(); at && at != &window; at = at->parentWidget()) {
        const bool isScroll = qobject_cast<const QScrollArea*>(at);
        const bool isWhole = qobject_cast<const QComboBox*>(at) || qobject_cast<const QLineEdit*>(at) ||
                             qobject_cast<const QTabBar*>(at) || qobject_cast<const QHeaderView*>(at) ||
                             (qobject_cast<const QAbstractScrollArea*>(at) && !isScroll);
        if (isWhole) return true;
    }
    return qobject_cast<const QHeaderView*>(widget) || widget->inherits("QScrollBar");
}

QList<QWidget*> controls(const QWidget& window) {
    QList<QWidget*> found;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->isVisibleTo(&window) && !isInner(widget, window)) found << widget;
    return found;
}

bool takesTab(const QWidget* widget) {
    return (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && !widget->focusProxy();
}

QRect placeIn(const QWidget& window, const QWidget* widget) {
    return {widget->mapTo(&window, QPoint()), widget->size()};
}

bool goesBack(const QRect& from, const QRect& to) {
    const bool above = to.bottom() <= from.top(), below = to.top() >= from.bottom();
    if (above) return to.left() <= from.right();
    return !below && to.right() <= from.left();
}

QString textOf(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->buddy() ? label->text() : QString();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) return button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(widget)) return box->title();
    return {};
}

// The place its contents need, as far as the control must show them whole.
QSize neededSize(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        if (label->text().isEmpty()) return {};
        if (!label->wordWrap()) return label->sizeHint();
        return {0, label->heightForWidth(label->width())};
    }
    if (qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
        qobject_cast<const QLineEdit*>(widget))
        return widget->minimumSizeHint().expandedTo(
            qobject_cast<const QAbstractButton*>(widget) ? widget->sizeHint() : QSize());
    if (qobject_cast<const QGroupBox*>(widget) || qobject_cast<const QPlainTextEdit*>(widget))
        return widget->minimumSizeHint();
    if (qobject_cast<const QAbstractItemView*>(widget)) // a heading and two rows
        return {0, widget->fontMetrics().lineSpacing() * 4};
    return {};
}

// The scrolling page on which the control stands; nullptr when it is on none.
const QWidget* scrollOf(const QWidget* widget, const QWidget& window) {
    for (const QWidget* at = widget; at && at != &window; at = at->parentWidget())
        if (qobject_cast<const QScrollArea*>(at)) return at;
    return nullptr;
}

bool isScrolled(const QWidget* widget, const QWidget& window) { return scrollOf(widget, window) != nullptr; }

// From one control to the next. On and off a page that scrolls it is the page that counts: where the control
// stands depends on how far it is scrolled.
bool stepGoesBack(const QWidget& window, const QWidget* from, const QWidget* to) {
    const QWidget *fromPage = scrollOf(from, window), *toPage = scrollOf(to, window);
    const bool same = fromPage == toPage;
    return goesBack(placeIn(window, same || !fromPage ? from : fromPage),
                    placeIn(window, same || !toPage ? to : toPage));
}

} // namespace

QStringList tabComplaints(QWidget& window) {
    QStringList complaints;
    QList<QWidget*> way;
    QWidget* at = QApplication::focusWidget();
    while (at && !way.contains(at) && way.size() < kMostControls) {
        if (!window.isAncestorOf(at)) {
            complaints << QStringLiteral("Tab leaves the window for %1").arg(nameOf(at));
            break;
        }
        way << at;
        QTest::keyClick(at, Qt::Key_Tab);
        QCoreApplication::processEvents();
        at = QApplication::focusWidget();
    }
    if (way.isEmpty()) return {QStringLiteral("nothing has the focus")};
    if (at != way.first())
        complaints << QStringLiteral("Tab does not come round but back to %1").arg(nameOf(at));
    for (QWidget* control : controls(window))
        if (takesTab(control) && !way.contains(control) && !qobject_cast<QScrollArea*>(control))
            complaints << QStringLiteral("Tab misses %1").arg(nameOf(control));
    int rounds = 0; // once from the last control to the first
    for (qsizetype i = 1; i <= way.size(); ++i) {
        const QWidget *from = way[i - 1], *to = way[i % way.size()];
        if (stepGoesBack(window, from, to) && ++rounds > 1)
            complaints << QStringLiteral("Tab goes back from %1 to %2").arg(nameOf(from), nameOf(to));
    }
    QStringList names;
    for (const QWidget* control : way)
        names << control->objectName();
    if (!complaints.isEmpty()) complaints << QStringLiteral("its way: ") + names.join(QStringLiteral(" "));
    return complaints;
}

QStringList nameComplaints(const QWidget& window) {
    QStringList complaints;
    for (QWidget* control : controls(window)) {
        if (!(control->focusPolicy() & Qt::TabFocus) || qobject_cast<QScrollArea*>(control) ||
            qobject_cast<QTabBar*>(control) || control->focusProxy())
            continue;
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control);
        if (!reader || reader->text(QAccessible::Name).trimmed().isEmpty())
            complaints << QStringLiteral("no name for screen readers: %1").arg(nameOf(control));
    }
    return complaints;
}

QStringList lettersOf(const QStringList& texts) {
    QStringList letters;
    for (const QString& text : texts)
        if (const QKeySequence letter = QKeySequence::mnemonic(text); !letter.isEmpty())
            letters << letter.toString();
    return letters;
}

QStringList letterComplaints(const QWidget& window, const QStringList& taken) {
    QStringList complaints, used = taken;
    const auto use = [&](const QString& text) {
        for (const QString& letter : lettersOf({text})) {
            if (used.contains(letter))
                complaints << QStringLiteral("%1 of \"%2\" is taken").arg(letter, text);
            used << letter;
        }
    };
    for (const QWidget* control : controls(window)) {
        if (const auto* tabs = qobject_cast<const QTabBar*>(control))
            for (int i = 0; i < tabs->count(); ++i)
                use(tabs->tabText(i));
        else
            use(textOf(control));
    }
    return complaints;
}

QStringList languageComplaints(const QWidget& window) {
    static const QStringList english{"OK",    "Cancel", "Yes",     "No",    "Close", "Save", "Open",
                                     "Apply", "Help",   "Discard", "Retry", "Abort", "Reset"};
    QStringList complaints;
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (english.contains(QString(button->text()).remove(u'&')))
            complaints << QStringLiteral("English: %1").arg(nameOf(button));
    return complaints;
}

QStringList cutComplaints(const QWidget& window) {
    QStringList complaints;
    const QList<QWidget*> all = controls(window);
    for (const QWidget* control : all) {
        const QSize needed = neededSize(control);
        if (control->width() < needed.width() || control->height() < needed.height())
            complaints << QStringLiteral("cut: %1 is %2x%3, needs %4x%5")
                              .arg(nameOf(control))
                              .arg(control->width())
                              .arg(control->height())
                              .arg(needed.width())
                              .arg(needed.height());
        if (needed.isEmpty() || isScrolled(control, window)) continue;
        if (!control->parentWidget()->rect().contains(control->geometry()) ||
            !window.rect().contains(placeIn(window, control)))
            complaints << QStringLiteral("outside its window: %1").arg(nameOf(control));
        for (const QWidget* other : all)
            if (other > control && other->parentWidget() == control->parentWidget() &&
                !neededSize(other).isEmpty() && other->geometry().intersects(control->geometry()))
                complaints
                    << QStringLiteral("over each other: %1 and %2").arg(nameOf(control), nameOf(other));
    }
    return complaints;
}

void onEachPage(QWidget& window, const std::function<void(const QString& page)>& check) {
    check({});
    for (QTabWidget* tabs : window.findChildren<QTabWidget*>()) {
        const int first = tabs->currentIndex();
        for (int page = 0; page < tabs->count(); ++page) {
            if (page == first) continue;
            tabs->setCurrentIndex(page);
            QCoreApplication::processEvents();
            check(tabs->tabText(page));
        }
        tabs->setCurrentIndex(first);
    }
}

} // namespace orvan_test
