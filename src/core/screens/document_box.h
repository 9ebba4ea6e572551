// core/screens/document_box.h — shows an .htm file of the program folder to be read; needs no other program.
#pragma once

#include <QDialog>

namespace orvan {

class DocumentBox : public QDialog {
    Q_OBJECT

  public:
    // The caption is the document's own title. Links to the net open in the person's browser.
    explicit DocumentBox(const QString& file, QWidget* parent = nullptr);
};

} // namespace orvan
