// widgets/form.cpp — the entry form: keys, changes, wrong fields. Where its fields stand: form_layout.cpp.
#include "widgets/form.h"

#include "widgets/choice_list.h"
#include "widgets/field_editor.h"
#include "widgets/form_layout.h"

#include <algorithm>
#include <cassert>
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

bool leavesByItself(Qt::FocusReason reason) { // an open list, calendar or menu, another window
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

} // namespace

EntryForm::EntryForm(std::span<const FormField> fields, QWidget* parent) : QWidget(parent) {
    FormLayout layout(this, fields);
    fields_.reserve(fields.size());
    for (const FormField& about : fields)
        addField(about, layout);
    layout.finish();
    for (size_t i = 1; i < fields_.size(); ++i)
        setTabOrder(fields_[i - 1].editor->widget(), fields_[i].editor->widget());
}

EntryForm::~EntryForm() = default;

void EntryForm::addField(const FormField& about, FormLayout& layout) {
    Field field{about, makeEditor(about), nullptr, {}, {}};
    QWidget* editor = field.editor->widget();
    editor->setObjectName(about.name);
    editor->setAccessibleName(withoutMnemonic(about.label));
    editor->setToolTip(about.tip);
    editor->installEventFilter(this);
    field.note = layout.add(about, editor, field.editor->carriesLabel());
    QPalette palette = field.note->palette();
    palette.setColor(QPalette::WindowText, kWrongColor);
    field.note->setPalette(palette);
    field.loaded = field.entered = field.editor->value();
    fields_.push_back(std::move(field));
}

std::unique_ptr<FieldEditor> EntryForm::makeEditor(const FormField& about) {
    FieldEvents events;
    events.edited = [this, name = about.name] { wasEdited(name); };
    events.refused = [this, name = about.name](const QString& why) { say(find(name), why); };
    events.done = [this, name = about.name] { enterPressed(name); };
    events.touched = [this, name = about.name] {
        if (wrong_ == name) clearWrong();
    };
    return makeFieldEditor(about, events, this);
}

QString EntryForm::value(const QString& name) const { return find(name).editor->value(); }

void EntryForm::setValue(const QString& name, const QString& value) {
    Field& field = find(name);
    field.editor->put(value);
    field.loaded = field.entered = field.editor->value();
    if (wrong_ == name) clearWrong();
    checkDirty();
}

void EntryForm::enterValue(const QString& name, const QString& value) {
    Field& field = find(name);
    field.editor->put(value);
    field.entered = field.editor->value();
    if (wrong_ == name) clearWrong();
    checkDirty();
}

ChoiceList* EntryForm::choiceList(const QString& name) const {
    return qobject_cast<ChoiceList*>(find(name).editor->widget());
}

QWidget* EntryForm::editor(const QString& name) const { return find(name).editor->widget(); }

bool EntryForm::has(const QString& name) const {
    return std::any_of(fields_.begin(), fields_.end(),
                       [&](const Field& field) { return field.about.name == name; });
}

void EntryForm::setReadOnly(const QString& name, bool readOnly) {
    Field& field = find(name);
    field.readOnly = readOnly;
    field.editor->setReadOnly(readOnly);
}

void EntryForm::setAllReadOnly(bool readOnly) {
    for (const Field& field : fields_)
        if (field.about.kind != FieldKind::Display) setReadOnly(field.about.name, readOnly);
}

bool EntryForm::settle() {
    for (Field& field : fields_)
        if (!mayLeave(field)) return false;
    return true;
}

bool EntryForm::isDirty() const {
    return std::any_of(fields_.begin(), fields_.end(),
                       [](const Field& field) { return field.editor->value() != field.loaded; });
}

void EntryForm::acceptAsLoaded() {
    for (Field& field : fields_)
        field.loaded = field.entered = field.editor->value();
    checkDirty();
}

void EntryForm::revert() {
    for (Field& field : fields_) {
        if (field.editor->value() == field.loaded && !field.editor->isHalfTyped()) continue;
        field.editor->put(field.loaded);
        field.entered = field.loaded;
        emit edited(field.about.name);
    }
    clearWrong();
    checkDirty();
}

void EntryForm::focusField(const QString& name) {
    find(name).editor->widget()->setFocus(Qt::OtherFocusReason);
}

void EntryForm::focusFirst() {
    for (const Field& field : fields_) {
        if (field.about.kind == FieldKind::Display) continue;
        field.editor->widget()->setFocus(Qt::OtherFocusReason);
        return;
    }
}

void EntryForm::showWrong(const QString& name, const QString& reason) {
    Field& field = find(name);
    mark(field, reason);
    field.editor->widget()->setFocus(Qt::OtherFocusReason);
}

void EntryForm::mark(Field& field, const QString& reason) {
    clearWrong();
    wrong_ = field.about.name;
    say(field, QStringLiteral("⚠ ") + reason);
    QWidget* editor = field.editor->widget();
    editor->setToolTip(reason);
    editor->setAccessibleDescription(reason);
    update();
}

// One place for words about several fields: it has to say which one is meant.
void EntryForm::say(const Field& field, const QString& words) {
    const bool isShared = field.note->objectName() == FormLayout::sharedNote();
    field.note->setText(isShared ? QStringLiteral("%1: %2").arg(withoutMnemonic(field.about.label), words)
                                 : words);
}

void EntryForm::clearWrong() {
    wrong_.clear();
    for (Field& field : fields_) {
        field.note->clear();
        field.editor->widget()->setToolTip(field.about.tip);
        field.editor->widget()->setAccessibleDescription({});
    }
    update();
}

bool EntryForm::eventFilter(QObject* watched, QEvent* event) {
    Field* field = fieldOf(watched);
    if (!field) return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        if (field->editor->problem().isEmpty()) field->entered = field->editor->value();
    } else if (event->type() == QEvent::FocusOut) {
        if (!leavesByItself(static_cast<QFocusEvent*>(event)->reason())) left(*field);
    } else if (event->type() == QEvent::KeyPress) {
        if (handleKey(*field, *static_cast<QKeyEvent*>(event))) return true;
    } else if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
        update(); // the frame of a wrong field moves with it
    }
    return QWidget::eventFilter(watched, event);
}

// By mouse or Alt letter a field can be left with a text that is refused: it stays marked.
void EntryForm::left(Field& field) {
    if (const QString reason = (field.editor->settle(), field.editor->problem()); !reason.isEmpty())
        mark(field, reason);
    else if (wrong_.isEmpty())
        field.note->clear(); // a word about refused typing is over when the field is left
}

bool EntryForm::mayLeave(Field& field) {
    field.editor->settle();
    const QString reason = field.editor->problem();
    if (!reason.isEmpty()) showWrong(field.about.name, reason);
    return reason.isEmpty();
}

bool EntryForm::handleKey(Field& field, const QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (field.editor->takesEnter()) return false;
        if (!key.isAutoRepeat()) enterPressed(field.about.name);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return !mayLeave(field);
    case Qt::Key_Escape: return handleEscape(field);
    case Qt::Key_Z: return key.modifiers() == Qt::ControlModifier && handleUndo(field);
    default: return false;
    }
}

bool EntryForm::handleEscape(Field& field) {
    if (field.editor->value() == field.entered && !field.editor->isHalfTyped()) return false;
    field.editor->put(field.entered);
    wasEdited(field.about.name);
    return true;
}

bool EntryForm::handleUndo(const Field& field) {
    if (field.editor->undoesTyping()) return false;
    if (revertAll_) {
        revertAll_();
        return true;
    }
    if (!isDirty()) return false;
    revert();
    return true;
}

void EntryForm::enterPressed(const QString& name) {
    Field& field = find(name);
    if (field.editor->widget()->hasFocus() && mayLeave(field)) goOn(field);
}

void EntryForm::goOn(const Field& from) {
    const auto at = static_cast<size_t>(&from - fields_.data());
    for (size_t next = at + 1; next < fields_.size(); ++next) {
        const Field& field = fields_[next];
        QWidget* editor = field.editor->widget();
        if (field.about.kind == FieldKind::Display || field.readOnly || !editor->isEnabled() ||
            editor->isHidden())
            continue;
        editor->setFocus(Qt::TabFocusReason);
        return;
    }
    emit lastFieldDone();
}

void EntryForm::wasEdited(const QString& name) {
    if (wrong_ == name || wrong_.isEmpty()) clearWrong();
    emit edited(name);
    checkDirty();
}

void EntryForm::focusInEvent(QFocusEvent*) { focusFirst(); }

void EntryForm::checkDirty() {
    const bool dirty = isDirty();
    if (dirty == wasDirty_) return;
    wasDirty_ = dirty;
    emit dirtyChanged(dirty);
}

void EntryForm::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (wrong_.isEmpty()) return;
    const QWidget* editor = find(wrong_).editor->widget();
    if (!editor->isVisible()) return;
    QPainter painter(this);
    painter.setPen(QPen(kWrongColor, 2));
    painter.drawRect(QRect(editor->mapTo(this, QPoint()), editor->size()).adjusted(-2, -2, 2, 2));
}

EntryForm::Field* EntryForm::fieldOf(const QObject* editor) {
    const auto found = std::find_if(fields_.begin(), fields_.end(), [editor](const Field& field) {
        return field.editor->widget() == editor;
    });
    return found == fields_.end() ? nullptr : &*found;
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
