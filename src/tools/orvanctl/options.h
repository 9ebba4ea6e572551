// tools/orvanctl/options.h — the words after "orvanctl": a command, its plain arguments, its options.
#pragma once

#include <map>
#include <QString>
#include <QStringList>
#include <stdexcept>

namespace orvanctl {

// A mistake of the person at the terminal; the text is shown as it is and the status is 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Options {
  public:
    // Splits "--name value" from plain words; every option of `known` takes a value. Throws UsageError.
    Options(const QStringList& words, const QStringList& known);

    const QStringList& plain() const { return plain_; }
    QString text(const QString& name, const QString& otherwise) const;
    int number(const QString& name, int otherwise, int least, int most) const; // throws UsageError

  private:
    QStringList plain_;
    std::map<QString, QString> values_;
};

} // namespace orvanctl
