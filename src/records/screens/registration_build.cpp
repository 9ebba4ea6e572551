// records/screens/registration_build.cpp — the parts of a registration form and its keys.
#include "records/screens/photo_page.h"
#include "records/screens/registration_screen.h"
#include "records/screens/related_lists.h"
#include "records/screens/student_finder.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kProfessionWidth = 18;

QStringList fieldNames(const std::vector<FormPage>& pages) {
    QStringList names;
    for (const FormPage& page : pages)
        for (const FormField& field : page.fields)
            names << field.name;
    return names;
}

} // namespace

RegistrationScreen::RegistrationScreen(About about, std::vector<FormPage> pages, DatabaseSet& databases,
                                       Dialogs& dialogs, UserMemory& memory, const Clock& clock,
                                       QWidget* parent)
    : Screen(about.name, about.caption, dialogs, parent), databases_(databases), clock_(clock),
      about_(std::move(about)), registration_(databases, dialogs, clock, about_.rights),
      absences_(databases, dialogs, about_.rights), earlier_(databases, dialogs, about_.rights),
      pages_(nullptr), fields_(fieldNames(pages)) {
    QHBoxLayout* header = buildHeader(); // Tab goes in the order in which the parts are made
    pages_ = new FormPages(about_.name + QStringLiteral("Sayfalari"), std::move(pages), memory, this);
    build(header, memory);
    attempt(about_.name, [this] {
        loadChoices();
        if (auto first = registration_.records().next({}))
            showForm(Registration::formOf(std::move(*first)));
        else
            showNothing(result_->text());
    });
}

// Its fields lose the focus while they are deleted; by then there is nothing to check any more.
RegistrationScreen::~RegistrationScreen() { disconnect(qApp, nullptr, this, nullptr); }

void RegistrationScreen::build(QHBoxLayout* header, UserMemory& memory) {
    photo_ = new PhotoPage(databases_, dialogs(), about_.rights);
    lists_ = new RelatedLists(databases_, dialogs(), memory);
    pages_->addPage(QStringLiteral("fotografSayfasi"), QStringLiteral("Fotoğraf"), photo_);
    pages_->addPage(QStringLiteral("listelerSayfasi"), QStringLiteral("Listeler"), lists_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(header);
    layout->addWidget(who_);
    layout->addWidget(pages_, 1);
    layout->addWidget(result_ = new QLabel(this));
    layout->addLayout(buildButtons());
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    addKeys();
    connect(pages_, &FormPages::dirtyChanged, this, [this] { setUnsaved(pages_->isDirty()); });
    connect(pages_, &FormPages::edited, this, &RegistrationScreen::fieldEdited);
    connect(pages_, &FormPages::lastFieldDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* left, const QWidget*) { checkLeft(left); });
    setFocusProxy(finder_);
}

QHBoxLayout* RegistrationScreen::buildHeader() {
    finder_ = new StudentFinder(
        [this](StudentIndex& index) {
            attempt(QStringLiteral("Öğrenci arama"), [&] { index.load(databases_.level().database()); });
        },
        this);
    finder_->setObjectName(QStringLiteral("ogrenciBul"));
    finder_->setToolTip(QStringLiteral("Öğrenciyi numara, ad, kimlik no ya da kayıt no ile bulur (F3)"));
    connect(finder_, &StudentFinder::chosen, this, [this](const QString& number) {
        if (!settleUnsaved()) return;
        attempt(QStringLiteral("Öğrenci arama"), [&] { showRecord(number); });
        pages_->focusFirst();
    });
    auto* findLabel = new QLabel(QStringLiteral("Öğrenci b&ul:"), this);
    findLabel->setBuddy(finder_);
    auto* back =
        makeButton("onceki", QStringLiteral("Önce&ki"), QStringLiteral("Bir önceki öğrenci (Alt+PgUp)"), this,
                   [this] { step(Step::Back); });
    auto* forth =
        makeButton("sonraki", QStringLiteral("So&nraki"), QStringLiteral("Bir sonraki öğrenci (Alt+PgDn)"),
                   this, [this] { step(Step::Forth); });
    profession_ = new ChoiceList(kProfessionWidth, this);
    profession_->setObjectName(QStringLiteral("yeniKayitMeslegi"));
    profession_->setToolTip(QStringLiteral("Yeni kaydedilecek öğrencinin mesleği"));
    profession_->setAccessibleName(QStringLiteral("Yeni kayıt için meslek"));
    connect(profession_, &ChoiceList::codeChanged, this,
            [this] { attempt(QStringLiteral("Meslek seçimi"), [this] { proposeAnew(); }); });
    auto* professionLabel = new QLabel(QStringLiteral("&Meslek:"), this);
    professionLabel->setBuddy(profession_);
    auto* fresh =
        makeButton("yeni", QStringLiteral("Y&eni"), QStringLiteral("Seçilen meslekte yeni öğrenci (Ctrl+N)"),
                   this, [this] { startNew(); });
    connect(profession_, &ChoiceList::enterPressed, fresh, [fresh] { fresh->setFocus(Qt::TabFocusReason); });
    who_ = new QLabel(this);
    who_->setObjectName(QStringLiteral("kim"));
    who_->setTextFormat(Qt::PlainText);
    QFont bold = who_->font();
    bold.setBold(true);
    who_->setFont(bold);
    auto* row = new QHBoxLayout;
    row->addWidget(findLabel);
    row->addWidget(finder_, 1);
    row->addWidget(back);
    row->addWidget(forth);
    row->addSpacing(fontMetrics().averageCharWidth() * 3);
    row->addWidget(professionLabel);
    row->addWidget(profession_, 1);
    row->addWidget(fresh);
    return row;
}

QHBoxLayout* RegistrationScreen::buildButtons() {
    QPushButton* more = buildMoreButton();
    saveButton_ = makeButton("kaydet", QStringLiteral("Kay&det"),
                             QStringLiteral("Bütün sayfalardaki bilgileri kaydeder (Ctrl+S)"), this,
                             [this] { save(); });
    auto* remove = makeButton("sil", QStringLiteral("&Sil"), QStringLiteral("Öğrenciyi siler"), this,
                              [this] { this->remove(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* row = new QHBoxLayout;
    row->addWidget(more);
    row->addStretch(1);
    for (QPushButton* button : {saveButton_, remove, leave})
        row->addWidget(button);
    return row;
}

QPushButton* RegistrationScreen::buildMoreButton() {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("digerIslemlerMenusu"));
    const auto add = [&](const char* name, const QString& text, auto run) {
        QAction* action = menu->addAction(text, this, run);
        action->setObjectName(QString::fromLatin1(name));
    };
    add("oncekiIsyerineGonder", QStringLiteral("Önceki İşyerine &Gönder"), [this] { sendToEarlier(); });
    menu->addSeparator();
    add("adresVeliye", QStringLiteral("Öğrenci Adresini &Veliye Kopyala"),
        [this] { copy(AddressCopy::StudentToGuardian); });
    add("adresOgrenciye", QStringLiteral("Veli Adresini &Öğrenciye Kopyala"),
        [this] { copy(AddressCopy::GuardianToStudent); });
    menu->addSeparator();
    add("donemDevamsizliklari", QStringLiteral("Dönem &Devamsızlıklarını Sil…"), [this] { removeTerm(); });
    add("yenidenBaslama", QStringLiteral("&Yeniden Başlama (Dönem Tekrarı)…"), [this] { startAgain(); });
    menu->addSeparator();
    add("oburForm", about_.otherText, [this] {
        if (settleUnsaved()) emit openRequested(about_.otherKey, form_.stored.number());
    });
    auto* button = new QPushButton(QStringLiteral("Diğer İşlemle&r"), this);
    button->setObjectName(QStringLiteral("digerIslemler"));
    button->setMenu(menu);
    return button;
}

void RegistrationScreen::addKeys() {
    const auto shortcut = [this](const QList<QKeySequence>& keys, auto run) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setAutoRepeat(keys.first()[0].keyboardModifiers() == Qt::AltModifier); // only walking repeats
        connect(action, &QAction::triggered, this, run);
        addAction(action);
    };
    shortcut({QKeySequence(Qt::CTRL | Qt::Key_N)}, [this] { startNew(); });
    shortcut({QKeySequence(Qt::Key_F3), QKeySequence(Qt::CTRL | Qt::Key_F)}, [this] {
        finder_->setFocus(Qt::ShortcutFocusReason);
        finder_->selectAll();
    });
    shortcut({QKeySequence(Qt::ALT | Qt::Key_PageUp)}, [this] { step(Step::Back); });
    shortcut({QKeySequence(Qt::ALT | Qt::Key_PageDown)}, [this] { step(Step::Forth); });
}

} // namespace orvan
