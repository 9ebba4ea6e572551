// widgets/text_suggestions.cpp — see text_suggestions.h.
#include "widgets/text_suggestions.h"

#include "core/turkish_text.h"

#include <QCompleter>
#include <QLineEdit>
#include <QStringListModel>

namespace orvan {

namespace {
constexpr int kVisible = 12; // texts
}

TextSuggestions::TextSuggestions(QLineEdit* line)
    : QObject(line), completer_(new QCompleter(line)), shown_(new QStringListModel(line)) {
    completer_->setModel(shown_);
    completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer_->setMaxVisibleItems(kVisible);
    line->setCompleter(completer_);
    connect(line, &QLineEdit::textEdited, this, &TextSuggestions::offer);
    connect(completer_, qOverload<const QString&>(&QCompleter::activated), this, &TextSuggestions::chosen);
}

void TextSuggestions::offer(const QString& typed) {
    QStringList found;
    for (const QString& text : texts_)
        if (containsTurkish(text, typed.trimmed()) && text != typed) found << text;
    shown_->setStringList(found);
}

} // namespace orvan
