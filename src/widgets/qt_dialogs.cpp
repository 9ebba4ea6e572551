// widgets/qt_dialogs.cpp — message boxes, questions, text input, file choice and progress.
#include "widgets/qt_dialogs.h"

#include "widgets/choice_box.h"
#include "widgets/progress_box.h"

#include <algorithm>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

QMessageBox::Icon boxIcon(Icon icon) {
    switch (icon) {
    case Icon::Information: return QMessageBox::Information;
    case Icon::Question: return QMessageBox::Question;
    case Icon::Warning: return QMessageBox::Warning;
    case Icon::Critical: return QMessageBox::Critical;
    case Icon::None: break;
    }
    return QMessageBox::NoIcon;
}

struct ButtonText {
    const char* name;
    const char* text;
    QMessageBox::ButtonRole role;
};
constexpr ButtonText kYes{"evet", "&Evet", QMessageBox::YesRole};
constexpr ButtonText kNo{"hayir", "&Hayır", QMessageBox::NoRole};
constexpr ButtonText kOk{"tamam", "&Tamam", QMessageBox::AcceptRole};
constexpr ButtonText kCancel{"iptal", "İ&ptal", QMessageBox::RejectRole};

class Box : public QMessageBox {
  public:
    Box(const QString& text, const QString& title, orvan::Icon icon, const char* name)
        : QMessageBox(boxIcon(icon), title, text, NoButton, QApplication::activeWindow()) {
        setObjectName(QString::fromLatin1(name));
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
    }

    QPushButton* add(const ButtonText& button) {
        QPushButton* made = addButton(QString::fromUtf8(button.text), button.role);
        made->setObjectName(QString::fromLatin1(button.name));
        return made;
    }

    // True when `accepting` was pressed.
    bool run(QPushButton* accepting, QPushButton* preset, QPushButton* escape) {
        setDefaultButton(preset);
        setEscapeButton(escape);
        exec();
        return clickedButton() == accepting;
    }
};

QStringList firstPatterns(const QString& filter) {
    return filter.section(u'|', 1, 1).split(u';', Qt::SkipEmptyParts);
}

std::optional<QString> chosen(const QString& path) {
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

} // namespace

void QtDialogs::message(const QString& text, const QString& title, Icon icon) {
    Box box(text, title, icon, "mesajKutusu");
    QPushButton* ok = box.add(kOk);
    box.run(ok, ok, ok);
}

Answer QtDialogs::askYesNo(const QString& text, const QString& title, Answer preset) {
    Box box(text, title, Icon::Question, "soruKutusu");
    QPushButton* yes = box.add(kYes);
    QPushButton* no = box.add(kNo);
    return box.run(yes, preset == Answer::Yes ? yes : no, no) ? Answer::Yes : Answer::No;
}

bool QtDialogs::askOkCancel(const QString& text, const QString& title, Icon icon) {
    Box box(text, title, icon, "onayKutusu");
    QPushButton* ok = box.add(kOk);
    QPushButton* cancel = box.add(kCancel);
    return box.run(ok, ok, cancel);
}

std::optional<QString> QtDialogs::inputText(const QString& label, const QString& title,
                                            const QString& initial, InputKind kind) {
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("metinKutusu"));
    dialog.setWindowTitle(title);
    auto* text = new QLineEdit(initial, &dialog);
    text->setObjectName(QStringLiteral("metin"));
    text->setEchoMode(kind == InputKind::Password ? QLineEdit::Password : QLineEdit::Normal);
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 40);
    text->selectAll();
    auto* caption = new QLabel(label, &dialog);
    caption->setTextFormat(Qt::PlainText);
    caption->setBuddy(text);
    text->setAccessibleName(label);
    auto* buttons = new QDialogButtonBox(&dialog);
    QPushButton* ok = buttons->addButton(QString::fromUtf8(kOk.text), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("tamam"));
    ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(QString::fromUtf8(kCancel.text), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("iptal"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(caption);
    layout->addWidget(text);
    layout->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return text->text();
}

std::optional<qsizetype> QtDialogs::choose(const QString& text, const QString& title,
                                           const QStringList& choices, qsizetype preset) {
    ChoiceBox box(text, title, choices, preset, QApplication::activeWindow());
    if (box.exec() != QDialog::Accepted) return std::nullopt;
    return box.chosen();
}

std::optional<QString> QtDialogs::chooseFile(const QString& title, const QString& filter,
                                             const QString& startFolder) {
    return chosen(
        QFileDialog::getOpenFileName(QApplication::activeWindow(), title, startFolder, qtFileFilter(filter)));
}

std::optional<QString> QtDialogs::chooseSaveFile(const QString& title, const QString& filter,
                                                 const QString& suggested) {
    QFileDialog dialog(QApplication::activeWindow(), title, {}, qtFileFilter(filter));
    dialog.setObjectName(QStringLiteral("dosyaKaydet"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(defaultSuffix(filter));
    dialog.selectFile(suggested);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().first();
}

std::optional<QString> QtDialogs::chooseFolder(const QString& title, const QString& startFolder) {
    return chosen(QFileDialog::getExistingDirectory(QApplication::activeWindow(), title, startFolder));
}

std::unique_ptr<Progress> QtDialogs::beginProgress(const QString& title, int total) {
    return std::make_unique<BoxProgress>(title, total);
}

QString qtFileFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString words = parts[i].section(QStringLiteral(" ("), 0, 0);
        const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
        filters << QStringLiteral("%1 (%2)").arg(words, patterns);
    }
    return filters.join(QStringLiteral(";;"));
}

QString defaultSuffix(const QString& filter) {
    const QStringList patterns = firstPatterns(filter);
    if (patterns.isEmpty() || !patterns.first().startsWith(QStringLiteral("*."))) return {};
    const QString suffix = patterns.first().mid(2);
    return suffix.contains(u'*') ? QString() : suffix;
}

} // namespace orvan
