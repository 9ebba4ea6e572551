// core/screens/login_dialog.cpp — the sign-in box.
#include "core/screens/login_dialog.h"

#include "core/users.h"
#include "widgets/screen.h"
#include "widgets/text_edit.h"
#include "widgets/user_memory.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kFieldWidth = 24;
const QString kLastUser = QStringLiteral("SonKullanici");

QPushButton* addButton(QDialogButtonBox* box, const char* name, const QString& text,
                       QDialogButtonBox::ButtonRole role) {
    QPushButton* button = box->addButton(text, role);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

} // namespace

LoginDialog::LoginDialog(const ProgramFolder& folder, Session& session, Dialogs& dialogs, UserMemory& memory,
                         QWidget* parent)
    : QDialog(parent), folder_(folder), session_(session), dialogs_(dialogs), memory_(memory),
      name_(new TextEdit(TextEntry::Code, 0, kFieldWidth, this)),
      password_(new TextEdit(TextEntry::Code, 0, kFieldWidth, this)) {
    setObjectName(QStringLiteral("giris"));
    setWindowTitle(QStringLiteral("ORVAN - Kullanıcı Girişi"));
    name_->setObjectName(QStringLiteral("kullaniciAdi"));
    name_->setAccessibleName(QStringLiteral("Kullanıcı Adı"));
    password_->setObjectName(QStringLiteral("sifre"));
    password_->setAccessibleName(QStringLiteral("Şifre"));
    password_->setEchoMode(QLineEdit::Password);

    auto* fields = new QFormLayout;
    fields->addRow(QStringLiteral("&Kullanıcı Adı:"), name_);
    fields->addRow(QStringLiteral("&Şifre:"), password_);
    auto* buttons = new QDialogButtonBox(this);
    auto* enter = addButton(buttons, "girisYap", QStringLiteral("&Giriş"), QDialogButtonBox::AcceptRole);
    addButton(buttons, "cikis", QStringLiteral("&Çıkış"), QDialogButtonBox::RejectRole);
    enter->setDefault(true);
    const bool first = awaitsFirstUser(folder, session);
    auto* heading = new QLabel(
        first ? QStringLiteral("Bu kurumda henüz kullanıcı yok.\nYazacağınız ad ve şifre, tüm haklara sahip\n"
                               "ilk kullanıcının olur.")
              : QStringLiteral("Programa girmek için kullanıcı adınızı ve şifrenizi yazınız."),
        this);
    heading->setObjectName(QStringLiteral("aciklama"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addLayout(fields);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(buttons, &QDialogButtonBox::accepted, this, &LoginDialog::trySignIn);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    if (!first) name_->setText(memory_.value(kLastUser).toString());
    (name_->text().isEmpty() ? name_ : password_)->setFocus();
}

void LoginDialog::trySignIn() {
    SignIn outcome = SignIn::Refused;
    attempt(dialogs_, QStringLiteral("Kullanıcı girişi"),
            [&] { outcome = signIn(folder_, session_, dialogs_, name_->text(), password_->text()); });
    if (outcome == SignIn::Accepted) {
        memory_.setValue(kLastUser, session_.user);
        accept();
        return;
    }
    if (outcome == SignIn::SwitchedOff)
        dialogs_.message(QStringLiteral("Programa giriş kapatılmış (%1 dosyasında 0 yazılı).\n"
                                        "Lütfen sistem yetkilisi ile görüşünüz.")
                             .arg(folder_.resolve(QStringLiteral("\\orvyet.ini"))),
                         QStringLiteral("Uyarı"), Icon::Warning);
    QLineEdit* next = name_->text().trimmed().isEmpty() ? name_ : password_;
    next->setFocus(Qt::OtherFocusReason);
    next->selectAll();
}

} // namespace orvan
