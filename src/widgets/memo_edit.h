// widgets/memo_edit.h — a text of several lines. Enter starts a new line; Ctrl+Enter and Tab leave the field.
// Over-long text is refused while typing and said so.
#pragma once

#include <QPlainTextEdit>

namespace orvan {

class MemoEdit : public QPlainTextEdit {
    Q_OBJECT

  public:
    // maxLength and width in characters, 0 = no limit; a line end counts as two, as it is stored.
    MemoEdit(int maxLength, int width, int lines, QWidget* parent = nullptr);

    QString value() const;               // lines end with CR LF, as the records hold them
    void setValue(const QString& value); // as loaded; emits nothing

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void edited(); // by the user's own hand
    void refused(const QString& why);
    void done(); // Ctrl+Enter

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    bool fits(const QString& added);
    int limit_, width_, lines_;
    bool loading_ = false;
    QString loaded_;
    QString loadedText_; // loaded_ as the editor shows it
};

} // namespace orvan
