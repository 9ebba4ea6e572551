// widgets/edit_delegate.cpp — editors, ticks and the mark of a refused cell.
#include "widgets/edit_delegate.h"

#include "widgets/date_edit.h"
#include "widgets/edit_model.h"
#include "widgets/tick_paint.h"

#include <algorithm>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace orvan {

namespace {

const QColor kWrongColor(0xB0, 0x10, 0x10);

int markWidth(const QRect& cell) { return cell.height() * 5 / 8; }

// A strip with "!" and a frame: seen without colour too.
void paintMark(QPainter* painter, const QRect& cell) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect strip(cell.topLeft(), QSize(markWidth(cell), cell.height()));
    painter->fillRect(strip, kWrongColor);
    painter->setPen(QPen(kWrongColor, 1.5));
    painter->drawRect(QRectF(cell).adjusted(1, 1, -1.5, -1.5));
    QFont font = painter->font();
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(Qt::white);
    painter->drawText(strip, Qt::AlignCenter, QStringLiteral("!"));
    painter->restore();
}

QLineEdit* lineOf(QWidget* editor) {
    if (auto* list = qobject_cast<ChoiceList*>(editor)) return list->lineEdit();
    return qobject_cast<QLineEdit*>(editor);
}

} // namespace

QWidget* EditDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    const EditColumn& column = host_.column(index);
    QWidget* editor = nullptr;
    switch (column.kind) {
    case CellKind::Check:
    case CellKind::ReadOnly: return nullptr;
    case CellKind::Choice: {
        auto* list = new ChoiceList(1, parent);
        list->setChoices(column.choices);
        // its own list of matches takes Enter past every filter
        connect(list, &ChoiceList::enterPressed, this, [this] {
            const_cast<EditDelegate*>(this)->finish();
            host_.leave(Qt::Key_Enter);
        });
        editor = list;
        break;
    }
    case CellKind::Date: editor = new DateEdit(parent); break;
    case CellKind::Number: editor = new NumberEdit(NumberKind::Whole, column.limits, 0, 1, parent); break;
    case CellKind::Money: editor = new NumberEdit(NumberKind::Money, column.limits, 0, 1, parent); break;
    case CellKind::Decimal: editor = new NumberEdit(NumberKind::Decimal, column.limits, 0, 1, parent); break;
    default:
        editor = new TextEdit(column.kind == CellKind::Text ? TextEntry::FreeText : TextEntry::Code,
                              column.maxLength, 1, parent);
    }
    if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setFrame(false);
    editor->setMinimumWidth(0);
    editor->setMaximumWidth(QWIDGETSIZE_MAX);
    editor->setAutoFillBackground(true);
    editor->setObjectName(QStringLiteral("hucre"));
    editor->setAccessibleName(column.title);
    editor_ = editor;
    return editor;
}

// A refused text is there to be corrected.
void EditDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const bool refused = index.data(EditModel::RefusedRole).toBool();
    const QString value = host_.value(index);
    const QString text = index.data(Qt::EditRole).toString();
    if (auto* list = qobject_cast<ChoiceList*>(editor)) {
        list->setLoadedCode(value);
        if (refused) list->setEditText(text);
    } else if (auto* number = qobject_cast<NumberEdit*>(editor)) {
        number->setValue(value);
        if (refused) number->setText(text);
    } else if (auto* date = qobject_cast<DateEdit*>(editor)) {
        date->setValue(value);
        if (refused) date->setText(text);
    } else {
        static_cast<TextEdit*>(editor)->putWhole(text);
    }
}

void EditDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const {
    if (auto* list = qobject_cast<ChoiceList*>(editor)) {
        list->settle();
        host_.commit(index, list->isSettled() ? list->code() : list->currentText());
    } else {
        host_.commit(index, static_cast<QLineEdit*>(editor)->text());
    }
}

void EditDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
    QRect place = option.rect;
    const EditColumn& column = host_.column(index);
    // room for the arrow of a list or the calendar's button; narrow columns show what is typed
    const bool hasButton = column.kind == CellKind::Choice || column.kind == CellKind::Date;
    const int needed = fieldWidth(editor, hasButton ? 10 : 4);
    place.setWidth(std::min(std::max(place.width(), needed), editor->parentWidget()->width() - place.left()));
    editor->setGeometry(place);
}

void EditDelegate::begin(bool replace) {
    replace_ = replace;
    QLineEdit* line = editor_ ? lineOf(editor_) : nullptr;
    if (!line) return;
    if (replace)
        line->selectAll();
    else
        line->end(false);
}

void EditDelegate::finish() {
    if (!editor_) return;
    QWidget* editor = editor_;
    emit commitData(editor);
    emit closeEditor(editor, NoHint);
    editor_ = nullptr;
}

bool EditDelegate::endsEditor(const QKeyEvent& key) const {
    const bool isList = qobject_cast<ChoiceList*>(editor_) != nullptr;
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return true;
    case Qt::Key_Up:
    case Qt::Key_Down: return !isList && key.modifiers() == Qt::NoModifier;
    case Qt::Key_Left:
    case Qt::Key_Right: return replace_ && !isList && key.modifiers() == Qt::NoModifier;
    default: return false;
    }
}

bool EditDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (watched != editor_) return QStyledItemDelegate::eventFilter(watched, event);
    if (event->type() == QEvent::ShortcutOverride) { // Esc, Tab and arrows are the editor's, not the window's
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape || endsEditor(*key)) {
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (endsEditor(*key)) {
            const auto pressed = static_cast<Qt::Key>(key->key());
            const bool held = key->isAutoRepeat() && (pressed == Qt::Key_Return || pressed == Qt::Key_Enter);
            if (held) return true;
            finish();
            host_.leave(pressed);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

bool EditDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
    const bool isTick = host_.column(index).kind == CellKind::Check &&
                        event->type() == QEvent::MouseButtonRelease && index.flags() & Qt::ItemIsEditable;
    if (!isTick) return QStyledItemDelegate::editorEvent(event, model, option, index);
    if (!tickRect(option)
             .adjusted(-3, -3, 3, 3)
             .contains(static_cast<QMouseEvent*>(event)->position().toPoint()))
        return false;
    host_.commit(index, index.data(EditModel::TickedRole).toBool() ? kNoText : kYesText);
    return true;
}

void EditDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const bool refused = index.data(EditModel::RefusedRole).toBool();
    if (index.data(EditModel::KindRole).toInt() == static_cast<int>(CellKind::Check) && !refused) {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const bool ticked = index.data(EditModel::TickedRole).toBool();
        paintTick(painter, cell, ticked ? Qt::Checked : Qt::Unchecked, index.flags() & Qt::ItemIsEditable);
        return;
    }
    QStyleOptionViewItem cell = option;
    if (refused)
        cell.rect.setLeft(cell.rect.left() + markWidth(option.rect)); // the text stands beside the mark
    QStyledItemDelegate::paint(painter, cell, index);
    if (refused) paintMark(painter, option.rect);
}

} // namespace orvan
