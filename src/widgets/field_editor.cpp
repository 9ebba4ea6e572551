// widgets/field_editor.cpp — the editors of a form's fields, a class per kind of widget.
#include "widgets/field_editor.h"

#include "widgets/choice_list.h"
#include "widgets/date_edit.h"
#include "widgets/memo_edit.h"

#include <QAction>
#include <QCheckBox>

namespace orvan {

namespace {

class LineField : public FieldEditor {
  public:
    LineField(TextEdit* line, const FieldEvents& events) : line_(line) {
        QObject::connect(line, &QLineEdit::textEdited, line, events.edited);
        QObject::connect(line, &TextEdit::refused, line, events.refused);
    }
    QWidget* widget() const override { return line_; }
    QString value() const override { return line_->text(); }
    void put(const QString& value) override { line_->putWhole(value); }
    bool undoesTyping() const override { return line_->isUndoAvailable(); }
    void setReadOnly(bool readOnly) override {
        line_->setReadOnly(readOnly);
        showReadOnly(line_, readOnly);
        for (QAction* button : line_->actions())
            button->setEnabled(!readOnly);
    }

  private:
    TextEdit* line_;
};

// A date or a number: its text has a form of its own.
template <class Edit> class FormedField final : public LineField {
  public:
    FormedField(Edit* edit, const FieldEvents& events) : LineField(edit, events), edit_(edit) {}
    QString value() const override { return edit_->value(); }
    void put(const QString& value) override { edit_->setValue(value); }
    QString problem() const override { return edit_->problem(); }
    void settle() override { edit_->settle(); }

  private:
    Edit* edit_;
};

class ChoiceField final : public FieldEditor {
  public:
    ChoiceField(const FormField& about, const FieldEvents& events, QWidget* parent)
        : list_(new ChoiceList(about.width, parent)) {
        QObject::connect(list_, &ChoiceList::codeChanged, list_, events.edited);
        QObject::connect(list_, &QComboBox::editTextChanged, list_, events.touched);
        QObject::connect(list_, &ChoiceList::enterPressed, list_, events.done);
    }
    QWidget* widget() const override { return list_; }
    QString value() const override { return list_->code(); }
    void put(const QString& value) override { list_->setLoadedCode(value); }
    bool undoesTyping() const override { return false; }
    void settle() override { list_->settle(); }
    bool isHalfTyped() const override { return !list_->isSettled(); }
    QString problem() const override {
        if (list_->isSettled()) return {};
        return QStringLiteral("Listede \"%1\" yok. Listeden seçiniz ya da boş bırakınız.")
            .arg(list_->currentText());
    }
    bool takesEnter() const override { return true; }
    void setReadOnly(bool readOnly) override {
        list_->setReadOnly(readOnly);
        showReadOnly(list_, readOnly);
    }

  private:
    ChoiceList* list_;
};

QString checkLabel(QString label) {
    if (label.endsWith(u':')) label.chop(1);
    return label;
}

class CheckField final : public FieldEditor {
  public:
    CheckField(const FormField& about, const FieldEvents& events, QWidget* parent)
        : box_(new CheckMark(checkLabel(about.label), parent)), yes_(about.yes), no_(about.no),
          loaded_(about.no) {
        QObject::connect(box_, &QCheckBox::clicked, box_, events.edited);
    }
    QWidget* widget() const override { return box_; }
    QString value() const override {
        if (box_->isChecked() == (loaded_ == yes_)) return loaded_;
        return box_->isChecked() ? yes_ : no_;
    }
    void put(const QString& value) override {
        loaded_ = value;
        box_->setChecked(value == yes_);
    }
    bool undoesTyping() const override { return false; }
    bool carriesLabel() const override { return true; }
    void setReadOnly(bool readOnly) override { box_->isReadOnly = readOnly; }

  private:
    // Read only it keeps its colours and can still be entered.
    class CheckMark : public QCheckBox {
      public:
        using QCheckBox::QCheckBox;
        bool isReadOnly = false;

      protected:
        void nextCheckState() override {
            if (!isReadOnly) QCheckBox::nextCheckState();
        }
    };
    CheckMark* box_;
    QString yes_, no_, loaded_;
};

class MemoField final : public FieldEditor {
  public:
    MemoField(const FormField& about, const FieldEvents& events, QWidget* parent)
        : memo_(new MemoEdit(about.maxLength, about.width, about.lines, parent)) {
        QObject::connect(memo_, &MemoEdit::edited, memo_, events.edited);
        QObject::connect(memo_, &MemoEdit::refused, memo_, events.refused);
        QObject::connect(memo_, &MemoEdit::done, memo_, events.done);
    }
    QWidget* widget() const override { return memo_; }
    QString value() const override { return memo_->value(); }
    void put(const QString& value) override { memo_->setValue(value); }
    bool undoesTyping() const override { return memo_->document()->isUndoAvailable(); }
    bool takesEnter() const override { return true; }
    void setReadOnly(bool readOnly) override {
        memo_->setReadOnly(readOnly);
        memo_->setTabChangesFocus(true);
        showReadOnly(memo_, readOnly);
    }

  private:
    MemoEdit* memo_;
};

std::unique_ptr<FieldEditor> numberField(NumberKind kind, const FormField& about, const FieldEvents& events,
                                         QWidget* parent) {
    auto* edit = new NumberEdit(kind, about.limits, about.maxLength, about.width, parent);
    return std::make_unique<FormedField<NumberEdit>>(edit, events);
}

std::unique_ptr<FieldEditor> textField(TextEntry entry, const FormField& about, const FieldEvents& events,
                                       QWidget* parent) {
    auto* line = new TextEdit(entry, about.maxLength, about.width, parent);
    if (about.kind == FieldKind::Password) line->setEchoMode(QLineEdit::Password);
    auto field = std::make_unique<LineField>(line, events);
    if (about.kind == FieldKind::Display) field->setReadOnly(true);
    return field;
}

} // namespace

std::unique_ptr<FieldEditor> makeFieldEditor(const FormField& about, FieldEvents events, QWidget* parent) {
    switch (about.kind) {
    case FieldKind::Text: return textField(TextEntry::FreeText, about, events, parent);
    case FieldKind::Code:
    case FieldKind::Display:
    case FieldKind::Password: return textField(TextEntry::Code, about, events, parent);
    case FieldKind::Choice: return std::make_unique<ChoiceField>(about, events, parent);
    case FieldKind::Number: return numberField(NumberKind::Whole, about, events, parent);
    case FieldKind::Money: return numberField(NumberKind::Money, about, events, parent);
    case FieldKind::Decimal: return numberField(NumberKind::Decimal, about, events, parent);
    case FieldKind::Check: return std::make_unique<CheckField>(about, events, parent);
    case FieldKind::Memo: return std::make_unique<MemoField>(about, events, parent);
    case FieldKind::Date: break;
    }
    auto* date = new DateEdit(parent);
    QObject::connect(date, &DateEdit::dateChosen, date, events.edited);
    return std::make_unique<FormedField<DateEdit>>(date, events);
}

void showReadOnly(QWidget* editor, bool readOnly) {
    QPalette palette = editor->palette();
    const QPalette usual = editor->parentWidget() ? editor->parentWidget()->palette() : QPalette();
    palette.setColor(QPalette::Base, usual.color(readOnly ? QPalette::Window : QPalette::Base));
    editor->setPalette(palette);
}

} // namespace orvan
