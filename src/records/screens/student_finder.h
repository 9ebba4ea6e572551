// records/screens/student_finder.h — a line into which part of a number or name is typed; the students that
// fit stand below it. Arrows choose, Enter takes the marked one or the first.
#pragma once

#include "records/student_index.h"

#include <functional>
#include <QLineEdit>

class QCompleter;
class QStringListModel;

namespace orvan {

class StudentFinder : public QLineEdit {
    Q_OBJECT

  public:
    // `load` fills the index; called when the line has the focus, or something is typed, and the index is not
    // fresh.
    StudentFinder(std::function<void(StudentIndex&)> load, QWidget* parent = nullptr);

    void forget() { fresh_ = false; } // students have changed: read again before the next search

  signals:
    void chosen(const QString& number);

  protected:
    void focusInEvent(QFocusEvent* event) override;

  private:
    void prepare();
    void search(const QString& typed);
    void take(int row);
    void takeMarked();

    std::function<void(StudentIndex&)> load_;
    StudentIndex index_;
    bool fresh_ = false;
    QCompleter* completer_;
    QStringListModel* shown_;
    QStringList numbers_; // of the shown students
};

} // namespace orvan
