// tools/orvanctl/options.cpp — see options.h.
#include "tools/orvanctl/options.h"

namespace orvanctl {

Options::Options(const QStringList& words, const QStringList& known) {
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (!words[i].startsWith(QLatin1String("--"))) {
            plain_ << words[i];
            continue;
        }
        if (!known.contains(words[i])) throw UsageError("Bilinmeyen seçenek: " + words[i].toStdString());
        if (i + 1 == words.size())
            throw UsageError(words[i].toStdString() + " seçeneğinden sonra bir değer gelmelidir.");
        values_[words[i]] = words[i + 1];
        ++i;
    }
}

QString Options::text(const QString& name, const QString& otherwise) const {
    const auto found = values_.find(name);
    return found == values_.end() ? otherwise : found->second;
}

int Options::number(const QString& name, int otherwise, int least, int most) const {
    const auto found = values_.find(name);
    if (found == values_.end()) return otherwise;
    bool isNumber = false;
    const int number = found->second.toInt(&isNumber);
    if (isNumber && number >= least && number <= most) return number;
    throw UsageError(QStringLiteral("%1 seçeneği %2 ile %3 arasında bir sayı ister.")
                         .arg(name)
                         .arg(least)
                         .arg(most)
                         .toStdString());
}

} // namespace orvanctl
