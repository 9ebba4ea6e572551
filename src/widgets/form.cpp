// widgets/form.cpp — the entry form.
#include "widgets/form.h"

#include "widgets/choice_list.h"
#include "widgets/text_edit.h"

#include <algorithm>
#include <cassert>
#include <QAbstractItemView>
#include <QCompleter>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace orvan {

namespace {

QString withoutMnemonic(QString label) {
    label.remove(u'&');
    if (label.endsWith(u':')) label.chop(1);
    return label;
}

const QColor kWrongColor(0xB0, 0x10, 0x10);
constexpr int kNoteWidth = 26; // characters; longer words about a field take more lines

} // namespace

EntryForm::EntryForm(std::span<const FormField> fields, QWidget* parent) : QWidget(parent) {
    auto* layout = new QGridLayout(this);
    layout->setColumnStretch(2, 1);
    layout->setColumnMinimumWidth(2, fontMetrics().averageCharWidth() * kNoteWidth);
    layout->setHorizontalSpacing(fontMetrics().averageCharWidth() * 2);
    fields_.reserve(fields.size());
    for (const FormField& about : fields)
        addField(about, layout);
    layout->setRowStretch(layout->rowCount(), 1);
    for (size_t i = 1; i < fields_.size(); ++i)
        setTabOrder(fields_[i - 1].editor, fields_[i].editor);
}

EntryForm::~EntryForm() = default;

void EntryForm::addField(const FormField& about, QGridLayout* layout) {
    Field field{about, makeEditor(about), new QLabel(this), {}, {}};
    auto* label = new QLabel(about.label, this);
    label->setBuddy(field.editor);
    field.editor->setObjectName(about.name);
    field.editor->setAccessibleName(withoutMnemonic(about.label));
    field.editor->installEventFilter(this);
    field.note->setObjectName(about.name + QStringLiteral("-uyari"));
    field.note->setWordWrap(true);
    field.note->setTextFormat(Qt::PlainText);
    QPalette palette = field.note->palette();
    palette.setColor(QPalette::WindowText, kWrongColor);
    field.note->setPalette(palette);
    const int row = static_cast<int>(fields_.size());
    layout->addWidget(label, row, 0);
    layout->addWidget(field.editor, row, 1, Qt::AlignLeft);
    layout->addWidget(field.note, row, 2);
    fields_.push_back(field);
}

QWidget* EntryForm::makeEditor(const FormField& about) {
    if (about.kind == FieldKind::Choice) {
        auto* list = new ChoiceList(about.width, this);
        connect(list, &ChoiceList::codeChanged, this, [this, name = about.name] { wasEdited(name); });
        connect(list, &QComboBox::editTextChanged, this, [this, name = about.name] {
            if (wrong_ == name) clearWrong();
        });
        connect(list, &ChoiceList::enterPressed, this, [this, name = about.name] {
            const Field& field = find(name);
            if (field.editor->hasFocus()) goOn(field);
        });
        return list;
    }
    auto* text = new TextEdit(about.kind == FieldKind::Text ? TextEntry::FreeText : TextEntry::Code,
                              about.maxLength, about.width, this);
    text->setReadOnly(about.kind == FieldKind::Display);
    if (about.kind == FieldKind::Display) {
        QPalette palette = text->palette();
        palette.setColor(QPalette::Base, palette.color(QPalette::Window));
        text->setPalette(palette);
    }
    connect(text, &QLineEdit::textEdited, this, [this, name = about.name] { wasEdited(name); });
    connect(text, &TextEdit::refused, this,
            [this, name = about.name](const QString& why) { find(name).note->setText(why); });
    return text;
}

QString EntryForm::value(const QString& name) const { return valueOf(find(name)); }

void EntryForm::setValue(const QString& name, const QString& value) {
    Field& field = find(name);
    put(field, value);
    field.loaded = field.entered = valueOf(field);
    if (wrong_ == name) clearWrong();
    checkDirty();
}

ChoiceList* EntryForm::choiceList(const QString& name) const {
    return qobject_cast<ChoiceList*>(find(name).editor);
}

QWidget* EntryForm::editor(const QString& name) const { return find(name).editor; }

bool EntryForm::isDirty() const {
    return std::any_of(fields_.begin(), fields_.end(),
                       [this](const Field& field) { return valueOf(field) != field.loaded; });
}

void EntryForm::acceptAsLoaded() {
    for (Field& field : fields_)
        field.loaded = field.entered = valueOf(field);
    checkDirty();
}

void EntryForm::revert() {
    for (Field& field : fields_) {
        if (valueOf(field) == field.loaded) continue;
        put(field, field.loaded);
        emit edited(field.about.name);
    }
    clearWrong();
    checkDirty();
}

void EntryForm::focusField(const QString& name) { find(name).editor->setFocus(Qt::OtherFocusReason); }

void EntryForm::focusFirst() {
    for (const Field& field : fields_) {
        if (field.about.kind == FieldKind::Display) continue;
        field.editor->setFocus(Qt::OtherFocusReason);
        return;
    }
}

void EntryForm::showWrong(const QString& name, const QString& reason) {
    clearWrong();
    wrong_ = name;
    Field& field = find(name);
    field.note->setText(QStringLiteral("⚠ ") + reason);
    field.editor->setToolTip(reason);
    field.editor->setAccessibleDescription(reason);
    field.editor->setFocus(Qt::OtherFocusReason);
    update();
}

void EntryForm::clearWrong() {
    wrong_.clear();
    for (Field& field : fields_) {
        field.note->clear();
        field.editor->setToolTip({});
        field.editor->setAccessibleDescription({});
    }
    update();
}

bool EntryForm::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::find_if(fields_.begin(), fields_.end(),
                                    [watched](const Field& field) { return field.editor == watched; });
    if (found == fields_.end()) return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        found->entered = valueOf(*found);
    } else if (event->type() == QEvent::FocusOut && wrong_.isEmpty()) {
        found->note->clear(); // a word about refused typing is over when the field is left
    } else if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (handleKey(*found, key->key(), key->modifiers(), key->isAutoRepeat())) return true;
    }
    return QWidget::eventFilter(watched, event);
}

bool EntryForm::handleKey(Field& field, int key, Qt::KeyboardModifiers modifiers, bool held) {
    auto* list = qobject_cast<ChoiceList*>(field.editor);
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) &&
        !list) { // a list says enterPressed when it has settled
        if (!held) goOn(field);
        return true;
    }
    if (key == Qt::Key_Escape) {
        const bool typedHalf = list && !list->isSettled();
        if (valueOf(field) == field.entered && !typedHalf) return false;
        put(field, field.entered);
        wasEdited(field.about.name);
        return true;
    }
    if (key == Qt::Key_Z && modifiers == Qt::ControlModifier) {
        const auto* text = qobject_cast<QLineEdit*>(field.editor);
        if ((text && text->isUndoAvailable()) || !isDirty()) return false;
        revert();
        return true;
    }
    return false;
}

void EntryForm::goOn(const Field& from) {
    const auto at = static_cast<size_t>(&from - fields_.data());
    for (size_t next = at + 1; next < fields_.size(); ++next) {
        const Field& field = fields_[next];
        if (field.about.kind == FieldKind::Display || !field.editor->isEnabled() || field.editor->isHidden())
            continue;
        field.editor->setFocus(Qt::TabFocusReason);
        return;
    }
    emit lastFieldDone();
}

void EntryForm::wasEdited(const QString& name) {
    if (wrong_ == name || wrong_.isEmpty()) clearWrong();
    emit edited(name);
    checkDirty();
}

void EntryForm::checkDirty() {
    const bool dirty = isDirty();
    if (dirty == wasDirty_) return;
    wasDirty_ = dirty;
    emit dirtyChanged(dirty);
}

void EntryForm::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (wrong_.isEmpty()) return;
    QPainter painter(this);
    painter.setPen(QPen(kWrongColor, 2));
    painter.drawRect(find(wrong_).editor->geometry().adjusted(-2, -2, 2, 2));
}

QString EntryForm::valueOf(const Field& field) const {
    if (const auto* list = qobject_cast<ChoiceList*>(field.editor)) return list->code();
    return static_cast<QLineEdit*>(field.editor)->text();
}

void EntryForm::put(const Field& field, const QString& value) {
    if (auto* list = qobject_cast<ChoiceList*>(field.editor))
        list->setCode(value);
    else
        static_cast<QLineEdit*>(field.editor)->setText(value);
}

EntryForm::Field& EntryForm::find(const QString& name) {
    const auto found = std::find_if(fields_.begin(), fields_.end(),
                                    [&](const Field& field) { return field.about.name == name; });
    assert(found != fields_.end());
    return *found;
}

const EntryForm::Field& EntryForm::find(const QString& name) const {
    return const_cast<EntryForm*>(this)->find(name);
}

} // namespace orvan
