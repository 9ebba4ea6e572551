// widgets/text_suggestions.h — texts that are offered below a line while a person types into it; he may type
// something else. "i" finds "İ", "ı" finds "I".
#pragma once

#include <QObject>
#include <QStringList>

class QCompleter;
class QLineEdit;
class QStringListModel;

namespace orvan {

class TextSuggestions : public QObject {
    Q_OBJECT

  public:
    explicit TextSuggestions(QLineEdit* line); // belongs to the line

    void setTexts(const QStringList& texts) { texts_ = texts; } // in the order they are offered

  signals:
    void chosen(const QString& text);

  private:
    void offer(const QString& typed);

    QStringList texts_;
    QCompleter* completer_;
    QStringListModel* shown_;
};

} // namespace orvan
