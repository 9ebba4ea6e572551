// widgets/form_layout.h — where the fields of a form stand: columns side by side, titled groups in them, and
// the words about a wrong field (beside it in a form of one column, else on one line below).
#pragma once

#include "widgets/form.h"

class QGridLayout;
class QHBoxLayout;
class QVBoxLayout;

namespace orvan {

class FormLayout {
  public:
    FormLayout(QWidget* form, std::span<const FormField> fields);

    // Places label and editor; returns the label for words about the field.
    QLabel* add(const FormField& about, QWidget* editor, bool carriesLabel);
    void finish();

    static QString sharedNote() { return QStringLiteral("uyari"); } // object name of the line below

  private:
    QGridLayout* gridOf(const FormField& about);
    QLabel* makeNote(const QString& name) const;

    QWidget* form_;
    QHBoxLayout* columnsRow_;
    std::vector<QVBoxLayout*> columns_;
    struct Grid {
        QGridLayout* layout;
        int column;
    };
    std::vector<Grid> grids_;
    QGridLayout* grid_ = nullptr; // of the last field
    int column_ = -1;             // of the last field
    QString group_;
    QLabel* shared_ = nullptr;
};

} // namespace orvan
