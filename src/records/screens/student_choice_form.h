// records/screens/student_choice_form.h — a line of choices above a list of students: profession with its
// curriculum version, stage, class. Each begins with "(tümü)".
#pragma once

#include "records/bulk_edit.h"
#include "widgets/form.h"

namespace orvan {

class StudentChoiceForm : public EntryForm {
    Q_OBJECT

  public:
    explicit StudentChoiceForm(QWidget* parent = nullptr);

    // What can be chosen; what is chosen stays while it is still there.
    void offer(const std::vector<Profession>& professions, const QStringList& stages,
               const QStringList& classes);
    BulkSelection selection() const;
    void setSelection(const BulkSelection& selection); // emits nothing
    QString words() const;                             // what is chosen, for the notes of a print; empty: all

  signals:
    void chosen();
};

} // namespace orvan
