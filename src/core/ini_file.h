// core/ini_file.h — the small INI files of the program folder ("\Yapi.sys"), in code page 1254.
// Lines that it does not understand are kept as they are; sections and keys are found without regard to case.
#pragma once

#include <QString>
#include <QStringList>

namespace orvan {

class IniFile {
  public:
    explicit IniFile(const QString& path); // a missing file reads as empty

    QString value(const QString& section, const QString& key) const; // trimmed; empty when absent
    void setValue(const QString& section, const QString& key, const QString& value);
    // Writes the whole file beside the old one and puts it in its place. Throws jet::Error(DiskIO).
    void save() const;

  private:
    int findSection(const QString& section) const;          // line number or -1
    int findKey(int sectionLine, const QString& key) const; // line number or -1
    QString path_;
    QStringList lines_;
};

// Whole content of a small one-value file ("\orvyet.ini"), trimmed; empty when absent.
QString readOneValueFile(const QString& path);
void writeOneValueFile(const QString& path, const QString& value); // throws jet::Error(DiskIO)

} // namespace orvan
