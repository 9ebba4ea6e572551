// records/screens/isletme_kayit_formu.cpp — see isletme_kayit_formu.h.
#include "records/screens/isletme_kayit_formu.h"

#include "records/screens/supervisors_page.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/text_suggestions.h"

#include <algorithm>
#include <QLineEdit>

namespace orvan {

namespace {

const QString kName = QStringLiteral("K_Adi");
const QString kDistrict = QStringLiteral("K_Semt_Kodu");
const QString kChamber = QStringLiteral("K_MeslekOdasi");
const QString kProduction = QStringLiteral("K_uretim_alani");
const QString kBank = QStringLiteral("K_BANKA");
const QString kSupervisorPage = QStringLiteral("sayfaSorumlular");
constexpr int kWidest = 34; // characters shown
constexpr double kMostStaff = 99'999;

} // namespace

isletme_kayit_formu::isletme_kayit_formu(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                         UserMemory& memory, QWidget* parent)
    : RecordScreen(QStringLiteral("isletme_kayit_formu"), title, dialogs, memory, parent),
      places_(databases, dialogs, title) {
    RecordParts parts;
    parts.listName = QStringLiteral("isletmeler");
    parts.columns = {
        {kName, QStringLiteral("İşletme"), ListKind::Text, 25},
        {QStringLiteral("K_Semt_Adi"), QStringLiteral("Semt"), ListKind::Text, 14},
        {QStringLiteral("K_Telefon"), QStringLiteral("Telefon"), ListKind::Text, 17},
        {kChamber, QStringLiteral("Meslek odası"), ListKind::Text, 20, false},
        {kProduction, QStringLiteral("Üretim alanı"), ListKind::Text, 16, false},
        {supervisorFields()[0].name, QStringLiteral("1. eğitim sorumlusu"), ListKind::Text, 18, false}};
    parts.pages = formPages();
    parts.one = QStringLiteral("işletme");
    if (!databases.session().schoolName.isEmpty()) parts.notes << databases.session().schoolName;
    build(std::move(parts));

    supervisors_ = new SupervisorsPage(places_, levelText(databases.session().level), dialogs, memory);
    pages().addPage(kSupervisorPage, QStringLiteral("Eğitim Soru&mluları"), supervisors_);
    addButton(makeButton("bankaEkle", QStringLiteral("Ban&ka Ekle…"),
                         QStringLiteral("Banka listesine yeni bir banka ve şube ekler"), this,
                         [this] { addBank(); }));
    production_ = new TextSuggestions(qobject_cast<QLineEdit*>(pages().editor(kProduction)));
    connect(production_, &TextSuggestions::chosen, this,
            [this](const QString& text) { pages().enterValue(kProduction, text); });
    connect(&pages(), &FormPages::edited, this, [this](const QString& field) {
        if (field == kChamber) attempt(objectName(), [this] { offerProduction(); });
    });
    connect(supervisors_, &SupervisorsPage::changed, this, [this] { checkUnsaved(); });
    load();
}

std::vector<FormPage> isletme_kayit_formu::formPages() const {
    const auto field = [this](const char* name, const QString& label, FieldKind kind = FieldKind::Text,
                              const QString& group = {}) {
        const QString key = QString::fromLatin1(name);
        const int most = places_.width(key);
        FormField made{key, label, kind, most, std::clamp(most == 0 ? kWidest : most + 1, 8, kWidest)};
        made.group = group;
        return made;
    };
    const QString address = QStringLiteral("Adres ve iletişim"), trade = QStringLiteral("Meslek");
    const QString money = QStringLiteral("Devlet katkısı"), owner = QStringLiteral("İşveren vekili");
    FormField staff =
        field("K_Personel_Sayisi", QStringLiteral("Personel sayısı:"), FieldKind::Number, trade);
    staff.limits = {0, kMostStaff, 0};
    staff.width = 8;
    FormField refuses =
        field("K_isletmeKatkiIstemiyor", QStringLiteral("Devlet katkısı istemiyor"), FieldKind::Check, money);
    refuses.yes = QStringLiteral("Evet");
    refuses.no = QStringLiteral("Hayır");
    FormField notes = field("K_Dusunceler", QStringLiteral("Düşünceler:"), FieldKind::Memo);
    notes.width = 44;
    notes.lines = 12;
    return {
        {QStringLiteral("sayfaIsletme"),
         QStringLiteral("İşletme"),
         {field("K_Adi", QStringLiteral("Adı:")),
          field("K_Adresi1", QStringLiteral("Adresi:"), FieldKind::Text, address),
          field("K_Adresi2", QStringLiteral("Adresi (devamı):"), FieldKind::Text, address),
          field("K_Semt_Kodu", QStringLiteral("Semt:"), FieldKind::Choice, address),
          field("K_Telefon", QStringLiteral("Telefon:"), FieldKind::Code, address),
          field("K_Cep_Telefonu", QStringLiteral("Cep telefonu:"), FieldKind::Code, address),
          field("K_FAX", QStringLiteral("Faks:"), FieldKind::Code, address),
          field("K_MeslekOdasi", QStringLiteral("Meslek odası:"), FieldKind::Choice, trade),
          field("K_Oda_Sicil_No", QStringLiteral("Oda sicil no:"), FieldKind::Code, trade),
          field("K_uretim_alani", QStringLiteral("Üretim alanı:"), FieldKind::Text, trade), staff}},
        {QStringLiteral("sayfaSicil"),
         QStringLiteral("Si&cil ve Banka"),
         {field("K_SGKSicilNo", QStringLiteral("SGK sicil no:"), FieldKind::Code, QStringLiteral("Sicil")),
          field("K_VergiSicilNo", QStringLiteral("Vergi sicil no:"), FieldKind::Code,
                QStringLiteral("Sicil")),
          field("K_BANKA", QStringLiteral("Banka / şube:"), FieldKind::Choice, money),
          field("K_IBANNo", QStringLiteral("IBAN:"), FieldKind::Code, money), refuses,
          field("K_Isveren_Vekili", QStringLiteral("Adı soyadı:"), FieldKind::Text, owner),
          field("K_isveren_vekil_adresi1", QStringLiteral("Adresi:"), FieldKind::Text, owner),
          field("K_isveren_vekil_adresi2", QStringLiteral("Adresi (devamı):"), FieldKind::Text, owner),
          field("K_isveren_vekil_dogum_tarihi", QStringLiteral("Doğum tarihi:"), FieldKind::Date, owner),
          field("K_isveren_vekil_dogum_yeri", QStringLiteral("Doğum yeri:"), FieldKind::Text, owner)}},
        {QStringLiteral("sayfaDusunceler"), QStringLiteral("Düşü&nceler"), {notes}}};
}

std::vector<StoredRow> isletme_kayit_formu::readRows() { return places_.rows(); }

SaveOutcome isletme_kayit_formu::saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted,
                                         bool asked) {
    return places_.save(row, wanted, asked ? SaveQuestion::AlreadyAsked : SaveQuestion::Ask);
}

bool isletme_kayit_formu::removeRow(const StoredRow& row) { return places_.remove(row); }

void isletme_kayit_formu::showMore(const StoredRow* row) {
    supervisors_->show(row ? &row->values : nullptr);
    offerProduction();
}

void isletme_kayit_formu::takeOverMore(const StoredRow& row) { supervisors_->takeOver(row.values); }

bool isletme_kayit_formu::settleMore() {
    if (supervisors_->settle()) return true;
    pages().showPage(kSupervisorPage);
    return false;
}

bool isletme_kayit_formu::moreIsDirty() const { return supervisors_->isDirty(); }
void isletme_kayit_formu::revertMore() { supervisors_->revert(); }
void isletme_kayit_formu::addToSave(FieldTexts& wanted) const { supervisors_->addTo(wanted); }

bool isletme_kayit_formu::showWrongMore(const QString& field, const QString& reason) {
    if (!supervisors_->showWrong(field, reason)) return false;
    pages().showPage(kSupervisorPage);
    return true;
}

QString isletme_kayit_formu::wordsAfterSave(const FieldTexts& saved) {
    const QStringList warnings = places_.warnings(saved);
    return warnings.isEmpty() ? QString()
                              : QStringLiteral("Kontrol ediniz: ") + warnings.join(QLatin1Char(' '));
}

// The lists that the form offers, as they are now.
void isletme_kayit_formu::listRead() {
    std::vector<Choice> districts, chambers;
    for (const District& district : places_.districts()) {
        const auto known = [&](const Choice& choice) { return choice.code == district.code; };
        if (!district.code.isEmpty() && std::none_of(districts.begin(), districts.end(), known))
            districts.push_back({district.code, QStringLiteral("%1 (%2)").arg(district.name, district.code)});
    }
    QStringList names = places_.chambers();
    names.removeDuplicates();
    for (const QString& name : names)
        if (!name.isEmpty()) chambers.push_back({name, name});
    pages().choiceList(kDistrict)->setChoices(std::move(districts));
    pages().choiceList(kChamber)->setChoices(std::move(chambers));
    offerBanks();
}

void isletme_kayit_formu::offerBanks() {
    std::vector<Choice> banks;
    for (const Bank& bank : places_.banks())
        banks.push_back({bank.name, bank.shown()});
    pages().choiceList(kBank)->setChoices(std::move(banks));
}

void isletme_kayit_formu::offerProduction() {
    production_->setTexts(places_.productionFields(pages().value(kChamber)));
}

// Asks until it is right or cancelled; what was typed is offered again.
void isletme_kayit_formu::addBank() {
    attempt(QStringLiteral("Banka ekleme"), [this] {
        if (!places_.mayWrite()) return;
        const QString title = QStringLiteral("Yeni Banka");
        Bank bank;
        for (;;) {
            const auto name = dialogs().inputText(QStringLiteral("Banka adı:"), title, bank.name);
            if (!name) return;
            bank.name = *name;
            const auto branch =
                dialogs().inputText(QStringLiteral("Şube (yoksa boş bırakınız):"), title, bank.branch);
            if (!branch) return;
            bank.branch = *branch;
            const SaveOutcome outcome = places_.addBank(bank);
            if (outcome.saved) break;
            if (outcome.reason.isEmpty()) return;
            dialogs().message(outcome.reason, title, Icon::Warning);
        }
        offerBanks();
        say(QStringLiteral("Banka eklendi: ") + bank.shown().trimmed());
        emit recordsChanged();
    });
}

} // namespace orvan
