// reference/screens/frm_ana_meslek_degistir.cpp — see frm_ana_meslek_degistir.h.
#include "reference/screens/frm_ana_meslek_degistir.h"

#include "reference/definition_groups.h"
#include "reference/professions.h"
#include "reference/screens/definition_layouts.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/tick_list.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {
namespace {

const QString kAll = QStringLiteral("*"); // no profession has this code
const QString kChosen = QStringLiteral("secili");

std::vector<Choice> choicesOf(const std::vector<Profession>& professions) {
    std::vector<Choice> choices;
    for (const Profession& each : professions)
        choices.push_back({each.code, QStringLiteral("%1 - %2").arg(each.code, each.name)});
    return choices;
}

} // namespace

frmAnaMeslekDegistir::frmAnaMeslekDegistir(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                           UserMemory& memory, QWidget* parent)
    : Screen(QStringLiteral("frmAnaMeslekDegistir"), QStringLiteral("Ana Meslek Değiştirme"), dialogs,
             parent),
      databases_(databases), change_(databases, dialogs, title) {
    build(memory);
    attempt(objectName(), [this] {
        offer();
        load();
    });
}

void frmAnaMeslekDegistir::build(UserMemory& memory) {
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buildChoices());
    list_ = new TickList(
        QStringLiteral("anaMeslekOgrencileri"),
        {{QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 12},
         {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 16},
         {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 16},
         {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 26},
         {QStringLiteral("anaMeslek"), QStringLiteral("Şimdiki ana meslek"), ListKind::Text, 30}},
        {{kChosen, QStringLiteral("Değişecek")}}, dialogs(), memory, this);
    list_->setTitle(QStringLiteral("Ana mesleği değişecek öğrenciler"));
    list_->setEmptyText(QStringLiteral("Bu programda ve meslekte öğrenci yok."));
    layout->addWidget(list_, 1);
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    layout->addWidget(result_);
    layout->addLayout(buildButtons());
    setFocusProxy(profession_);
}

QLayout* frmAnaMeslekDegistir::buildChoices() {
    auto* layout = new QGridLayout;
    const auto add = [&](int row, int column, const QString& text, const char* name, int width) {
        auto* label = new QLabel(text, this);
        auto* list = new ChoiceList(width, this);
        list->setObjectName(QString::fromLatin1(name));
        label->setBuddy(list);
        layout->addWidget(label, row, column);
        layout->addWidget(list, row, column + 1);
        return list;
    };
    profession_ = add(0, 0, QStringLiteral("&Meslek:"), "meslek", 34);
    version_ = add(0, 2, QStringLiteral("Program:"), "program", 22);
    main_ = add(1, 0, QStringLiteral("Yeni a&na meslek:"), "anaMeslek", 34);
    layout->setColumnStretch(4, 1);
    version_->setChoices(versionChoices());
    version_->setCode(QString::number(kLastVersion));
    connect(version_, &ChoiceList::codeChanged, this, [this] { refresh(); });
    connect(profession_, &ChoiceList::codeChanged, this,
            [this] { attempt(objectName(), [this] { load(); }); });
    connect(profession_, &ChoiceList::enterPressed, this, [this] { main_->setFocus(Qt::TabFocusReason); });
    connect(version_, &ChoiceList::enterPressed, this, [this] { main_->setFocus(Qt::TabFocusReason); });
    connect(main_, &ChoiceList::enterPressed, this, [this] { list_->setFocus(Qt::TabFocusReason); });
    return layout;
}

QLayout* frmAnaMeslekDegistir::buildButtons() {
    auto* rows = new QHBoxLayout;
    rows->addStretch(1);
    rows->addWidget(makeButton("kaydet", QStringLiteral("Kay&det"),
                               QStringLiteral("İşaretli öğrencilerin ana mesleğini değiştirir (Ctrl+S, önce "
                                              "sorar)"),
                               this, [this] { save(); }));
    rows->addWidget(makeButton("yazdir", QStringLiteral("Yazdı&r"),
                               QStringLiteral("İşaretli öğrencileri yazdırır"), this,
                               [this] { list_->outputActions().front()->trigger(); }));
    rows->addWidget(makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                               this, [this] { closeWindow(); }));
    return rows;
}

int frmAnaMeslekDegistir::version() const { return version_->code().toInt(); }

void frmAnaMeslekDegistir::offer() {
    jet::SqlSession& level = databases_.level().sql();
    std::vector<Choice> all = choicesOf(professions(level, version()));
    all.insert(all.begin(), {kAll, QStringLiteral("Tüm meslekler")});
    profession_->setChoices(std::move(all));
    if (profession_->code().isEmpty()) profession_->setCode(kAll);
    main_->setChoices(choicesOf(mainProfessions(level, version())));
}

// Ticks of students who are still shown stay.
void frmAnaMeslekDegistir::load() {
    const QStringList ticked = list_->tickedRows();
    jet::SqlSession& level = databases_.level().sql();
    std::map<QString, QString> names, mainNames;
    for (const Profession& each : professions(level, version()))
        names[each.code] = each.name;
    for (const Profession& each : mainProfessions(level, version()))
        mainNames[each.code] = each.name;
    const auto nameIn = [](const std::map<QString, QString>& known, const QString& code, const char* none) {
        const auto found = known.find(code);
        return code.isEmpty() ? QString() : found == known.end() ? QString::fromUtf8(none) : found->second;
    };
    students_.clear();
    std::vector<TickRow> rows;
    const QString profession = profession_->code() == kAll ? QString() : profession_->code();
    for (const MainProfessionStudent& student : change_.students(version(), profession)) {
        students_[student.number] = student;
        rows.push_back({student.number,
                        {},
                        {student.number, student.name, student.surname,
                         nameIn(names, student.professionCode, "Bu koda ait Meslek yok"),
                         nameIn(mainNames, student.mainCode, "Bu koda ait AnaMeslek yok")},
                        {false}});
    }
    list_->setRows(std::move(rows));
    for (const QString& number : ticked)
        if (students_.contains(number)) list_->setTicked(number, kChosen, true);
}

void frmAnaMeslekDegistir::refresh() {
    attempt(objectName(), [this] {
        offer();
        load();
    });
}

bool frmAnaMeslekDegistir::save() {
    bool saved = false;
    attempt(objectName(), [&] {
        main_->settle();
        std::vector<MainProfessionStudent> seen;
        for (const QString& number : list_->tickedRows())
            seen.push_back(students_.at(number));
        const auto changed = change_.change(seen, version(), main_->code());
        if (!changed) return;
        saved = true;
        list_->revert(); // done: nobody is ticked
        load();
        result_->setText(QStringLiteral("%1 öğrencinin ana mesleği değişti.").arg(*changed));
        emit recordsChanged();
    });
    return saved;
}

void frmAnaMeslekDegistir::showRecord(const QString& studentNo) {
    if (studentNo.isEmpty()) return;
    profession_->setCode(kAll);
    for (int each = kLastVersion; each >= kFirstVersion; --each) {
        version_->setCode(QString::number(each));
        offer();
        load();
        if (!students_.contains(studentNo)) continue;
        list_->revert();
        list_->setTicked(studentNo, kChosen, true);
        list_->makeCurrent(studentNo);
        main_->setFocus(Qt::OtherFocusReason);
        return;
    }
    result_->setText(QStringLiteral("%1 numaralı öğrenci bu dosyada yok.").arg(studentNo));
}

} // namespace orvan
