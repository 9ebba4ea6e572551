// widgets/field_editor.h — one way to work with the editor of a form's field, whatever its kind. Each kind is
// one class in field_editor.cpp; the form knows none of them.
#pragma once

#include "widgets/form.h"

namespace orvan {

// What an editor tells its form.
struct FieldEvents {
    std::function<void()> edited;                    // by the user's own hand
    std::function<void(const QString& why)> refused; // what was typed did not fit
    std::function<void()> done;                      // Enter, where the editor takes it itself
    std::function<void()> touched;                   // typed text that is no value yet
};

class FieldEditor {
  public:
    virtual ~FieldEditor() = default;
    FieldEditor() = default;
    FieldEditor(const FieldEditor&) = delete;
    FieldEditor& operator=(const FieldEditor&) = delete;

    virtual QWidget* widget() const = 0;
    virtual QString value() const = 0;
    virtual void put(const QString& value) = 0; // as loaded; calls no event
    virtual void setReadOnly(bool readOnly) = 0;
    virtual bool undoesTyping() const = 0; // Ctrl+Z has something to undo in the field itself

    virtual QString problem() const { return {}; }     // why the typed text is refused; empty when it is not
    virtual void settle() {}                           // takes what is half typed
    virtual bool isHalfTyped() const { return false; } // text that settle() or Esc would change
    virtual bool takesEnter() const { return false; }  // Enter is the editor's own; `done` says when to go on
    virtual bool carriesLabel() const { return false; } // shows the label itself
};

std::unique_ptr<FieldEditor> makeFieldEditor(const FormField& about, FieldEvents events, QWidget* parent);

// A field that takes no input looks like its surroundings, but can be entered and copied.
void showReadOnly(QWidget* editor, bool readOnly);

} // namespace orvan
