// core/screens/document_box.cpp — see document_box.h.
#include "core/screens/document_box.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace orvan {

DocumentBox::DocumentBox(const QString& file, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("belge"));
    auto* text = new QTextBrowser(this);
    text->setObjectName(QStringLiteral("metin"));
    text->setOpenExternalLinks(true);
    text->setSource(QUrl::fromLocalFile(file), QTextDocument::HtmlResource);
    text->setAccessibleName(QFileInfo(file).fileName());
    const QString title = text->documentTitle();
    setWindowTitle(title.isEmpty() ? QFileInfo(file).fileName() : title);
    auto* buttons = new QDialogButtonBox(this);
    auto* leave = buttons->addButton(QStringLiteral("Kapa&t"), QDialogButtonBox::RejectRole);
    leave->setObjectName(QStringLiteral("kapat"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 34);
    text->setFocus();
}

} // namespace orvan
