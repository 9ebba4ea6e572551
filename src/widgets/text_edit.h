// widgets/text_edit.h — a one-line text field: over-long text is refused while typing and said so; on
// entering, a code or number is selected whole, in free text the caret goes to the end.
#pragma once

#include <QLineEdit>

namespace orvan {

enum class TextEntry { FreeText, Code };

class TextEdit : public QLineEdit {
    Q_OBJECT

  public:
    // maxLength and width in characters; maxLength 0 = no limit. Where room is short a wide field gets
    // narrower.
    TextEdit(TextEntry entry, int maxLength, int width, QWidget* parent = nullptr);

    // A loaded text, whole even where it is longer than may be typed.
    void putWhole(const QString& text);
    QSize sizeHint() const override;

  signals:
    void refused(const QString& why); // what was typed or pasted did not fit and was not taken

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    // The same entry in another form: no edit of the user's, but Ctrl+Z gives back what he typed.
    void retype(const QString& text);

  private:
    void placeCaret();
    bool fits(const QString& added);
    void pasteIfFits();
    TextEntry entry_;
    int limit_, width_;
};

// The key writes something: no command of Ctrl or Alt alone (AltGr arrives as both).
bool typesText(const QKeyEvent& key);

// Width in pixels of a field that shows `characters` of usual text.
int fieldWidth(const QWidget* field, int characters);
// The width a field that wants `characters` keeps where room is short.
int leastFieldWidth(const QWidget* field, int characters);

} // namespace orvan
