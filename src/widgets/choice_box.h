// widgets/choice_box.h — a modal box that lets a person take one of a list: typing part of a choice leaves
// those that hold it, arrows move in the list while the caret stays in the line, Enter takes.
#pragma once

#include <QDialog>
#include <QStringList>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace orvan {

class ChoiceBox : public QDialog {
    Q_OBJECT

  public:
    // REQUIRES: choices is not empty.
    ChoiceBox(const QString& text, const QString& title, const QStringList& choices, qsizetype preset,
              QWidget* parent = nullptr);

    qsizetype chosen() const; // place in choices; after it was accepted

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void filter(const QString& typed);
    QLineEdit* find_;
    QListWidget* list_;
    QPushButton* ok_ = nullptr;
};

} // namespace orvan
