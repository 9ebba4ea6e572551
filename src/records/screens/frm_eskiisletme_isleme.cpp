// records/screens/frm_eskiisletme_isleme.cpp — see frm_eskiisletme_isleme.h.
#include "records/screens/frm_eskiisletme_isleme.h"

#include "records/screens/student_finder.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/grid.h"

#include <algorithm>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kOrder = QStringLiteral("Ogr_sira");
const QString kPlace = QStringLiteral("Ogr_isyerinin_adi");
const QString kStart = QStringLiteral("Ogr_Ise_Giris_Tarihi");
const QString kEnd = QStringLiteral("Ogr_Isden_Ayrilis_Tarihi");
const QString kOld = QStringLiteral("eskiAd");
const QString kNew = QStringLiteral("yeniAd");
constexpr int kWidest = 34; // characters shown

} // namespace

frm_eskiisletme_isleme::frm_eskiisletme_isleme(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                               UserMemory& memory, QWidget* parent)
    : RecordScreen(QStringLiteral("frm_eskiisletme_isleme"), title, dialogs, memory, parent),
      history_(databases, dialogs, title) {
    RecordParts parts;
    parts.listName = QStringLiteral("oncekiIsyerleri");
    parts.columns = {{kOrder, QStringLiteral("Sıra"), ListKind::Number, 5},
                     {kPlace, QStringLiteral("İşyeri"), ListKind::Text, 22},
                     {kStart, QStringLiteral("Giriş"), ListKind::Date, 10},
                     {kEnd, QStringLiteral("Çıkış"), ListKind::Date, 10}};
    parts.pages = formPages();
    parts.one = QStringLiteral("önceki işyeri");
    parts.name = kPlace;
    parts.section = QStringLiteral("Öğre&ncinin Önceki İşyerleri");
    parts.header = [this, &databases](QWidget* section) { return buildHeader(databases, section); };
    build(std::move(parts));
    addSection(QStringLiteral("İşyeri Ad&ı Değiştirme"), buildRename());
    addHistoryButtons();
    setFirst(finder_);
    load();
}

std::vector<FormPage> frm_eskiisletme_isleme::formPages() const {
    const auto field = [this](const char* name, const QString& label, FieldKind kind = FieldKind::Text,
                              const QString& group = {}) {
        const QString key = QString::fromLatin1(name);
        const int most = history_.width(key);
        FormField made{key, label, kind, most, std::clamp(most + 1, 4, kWidest)};
        made.group = group;
        return made;
    };
    const QString period = QStringLiteral("Çalıştığı süre");
    FormField years = field("Ogr_Isletme1_Yil", QStringLiteral("Yıl:"), FieldKind::Code, period);
    years.tip = QStringLiteral("Boş bırakılırsa iki tarihten hesaplanır");
    return {
        {QStringLiteral("sayfaIsyeri"),
         QStringLiteral("Önceki işyeri"),
         {field("Ogr_isyerinin_adi", QStringLiteral("İşyeri:")),
          field("Ogr_Isyeri_Adresi1", QStringLiteral("Adresi:")),
          field("Ogr_Isyeri_Adresi2", QStringLiteral("Adresi (devamı):")),
          field("Ogr_Ise_Giris_Tarihi", QStringLiteral("İşe giriş tarihi:"), FieldKind::Date, period),
          field("Ogr_Isden_Ayrilis_Tarihi", QStringLiteral("İşten çıkış tarihi:"), FieldKind::Date, period),
          years, field("Ogr_Isletme1_Ay", QStringLiteral("Ay:"), FieldKind::Code, period),
          field("Ogr_Isletme1_Gun", QStringLiteral("Gün:"), FieldKind::Code, period),
          field("Ogr_AyrilisNedeni", QStringLiteral("Ayrılış nedeni:")),
          field("Ogr_SSK_SonOdeme_Tarihi", QStringLiteral("SSK en son ödeme:"), FieldKind::Date)}}};
}

QWidget* frm_eskiisletme_isleme::buildHeader(DatabaseSet& databases, QWidget* section) {
    auto* header = new QWidget(section);
    finder_ = new StudentFinder(
        [&databases](StudentIndex& index) { index.load(databases.level().database()); }, header);
    finder_->setObjectName(QStringLiteral("ogrenciBul"));
    auto* label = new QLabel(QStringLiteral("Ö&ğrenci bul:"), header);
    label->setBuddy(finder_);
    student_ = new QLabel(header);
    student_->setObjectName(QStringLiteral("ogrenci"));
    student_->setTextFormat(Qt::PlainText);
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(finder_, 2);
    layout->addWidget(student_, 3);
    connect(finder_, &StudentFinder::chosen, this, &frm_eskiisletme_isleme::showStudent);
    return header;
}

QWidget* frm_eskiisletme_isleme::buildRename() {
    auto* page = new QWidget(this);
    const FormField fields[] = {
        {kOld, QStringLiteral("Öğrencilerdeki işyeri adı:"), FieldKind::Choice, 0, kWidest},
        {kNew, QStringLiteral("Yeni adı (kayıtlı işletmelerden):"), FieldKind::Choice, 0, kWidest}};
    names_ = new EntryForm(fields, page);
    auto* about =
        new QLabel(QStringLiteral("Açık düzeydeki öğrencilerin çalıştığı işyerinin adını değiştirir; "
                                  "adres ve önceki işyerleri olduğu gibi kalır."),
                   page);
    about->setWordWrap(true);
    auto* change = makeButton("adDegistir", QStringLiteral("&Hepsinde Değiştir"),
                              QStringLiteral("Adı bu işyerindeki bütün öğrencilerde değiştirir (önce sorar)"),
                              page, [this] { rename(); });
    auto* line = new QHBoxLayout;
    line->addWidget(change);
    line->addStretch(1);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(about);
    layout->addWidget(names_);
    layout->addLayout(line);
    layout->addStretch(1);
    page->setFocusProxy(names_);
    connect(names_, &EntryForm::lastFieldDone, this, [change] { change->setFocus(Qt::TabFocusReason); });
    return page;
}

void frm_eskiisletme_isleme::addHistoryButtons() {
    addButton(makeButton("gonder", QStringLiteral("Ön&ceki İşyerine Gönder"),
                         QStringLiteral("Öğrencinin şimdiki işyerini önceki işyerlerine ekler"), this,
                         [this] { sendCurrent(); }));
    addButton(makeButton("yukari", QStringLiteral("Y&ukarı"), QStringLiteral("Satırı bir yukarıya taşır"),
                         this, [this] { move(EarlierWorkplaces::Move::Up); }));
    addButton(makeButton("asagi", QStringLiteral("Aşağı"), QStringLiteral("Satırı bir aşağıya taşır"), this,
                         [this] { move(EarlierWorkplaces::Move::Down); }));
}

void frm_eskiisletme_isleme::showRecord(const QString& student) { showStudent(student); }

void frm_eskiisletme_isleme::showStudent(const QString& number) {
    if (!settleUnsaved()) return;
    attempt(objectName(), [&] {
        owner_ = history_.owner(number);
        student_->setText(owner_
                              ? QStringLiteral("%1  %2 %3").arg(owner_->number, owner_->name, owner_->surname)
                              : QStringLiteral("Bu numarada öğrenci yok: %1").arg(number));
        list().setNotes({owner_ ? student_->text() : QString()});
        loadOther();
        list().setFocus(Qt::OtherFocusReason);
    });
}

void frm_eskiisletme_isleme::refresh() {
    finder_->forget();
    RecordScreen::refresh();
}

std::vector<StoredRow> frm_eskiisletme_isleme::readRows() {
    return owner_ ? history_.rows(*owner_) : std::vector<StoredRow>();
}

SaveOutcome frm_eskiisletme_isleme::saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted, bool) {
    if (!owner_) return SaveOutcome::refused({}, QStringLiteral("Önce yukarıdan öğrenciyi seçiniz."));
    return history_.save(*owner_, row, wanted);
}

bool frm_eskiisletme_isleme::removeRow(const StoredRow& row) { return history_.remove(row); }

// Other rows may have got other places; the names of the renaming may be others too.
void frm_eskiisletme_isleme::listRead() {
    list().setEmptyText(owner_
                            ? QStringLiteral("Öğrencinin önceki işyeri yok. “Yeni” ile ekleyiniz.")
                            : QStringLiteral("Yukarıdaki satıra numara ya da ad yazarak öğrenciyi seçiniz."));
    std::vector<Choice> inUse, registered;
    for (const EarlierWorkplaces::NameInUse& name : history_.namesInUse())
        inUse.push_back({name.name, QStringLiteral("%1 (%2 öğrenci)").arg(name.name).arg(name.students)});
    for (const QString& name : history_.registeredNames())
        if (registered.empty() || registered.back().code != name) registered.push_back({name, name});
    names_->choiceList(kOld)->setChoices(std::move(inUse));
    names_->choiceList(kNew)->setChoices(std::move(registered));
}

void frm_eskiisletme_isleme::move(EarlierWorkplaces::Move where) {
    if (!owner_ || !row() || !settleUnsaved()) return;
    attempt(QStringLiteral("Sıra değiştirme"), [&] {
        const jet::RowId moved = row()->id;
        if (!history_.move(*owner_, *row(), where)) return;
        showAgain(moved);
        emit recordsChanged();
    });
}

void frm_eskiisletme_isleme::sendCurrent() {
    if (!owner_) {
        say(QStringLiteral("Önce yukarıdan öğrenciyi seçiniz."));
        return;
    }
    if (!settleUnsaved()) return;
    attempt(QStringLiteral("Önceki İşyerine Gönder"), [this] {
        const auto sent = history_.sendToEarlier(owner_->number);
        if (!sent) return;
        showAgain(sent->id);
        say(QStringLiteral("Önceki işyerlerine eklendi: ") + sent->values.at(kPlace));
        emit recordsChanged();
    });
}

void frm_eskiisletme_isleme::rename() {
    if (!names_->settle()) return;
    attempt(QStringLiteral("İşyeri adı değiştirme"), [this] {
        const auto changed = history_.renameInStudents(names_->value(kOld), names_->value(kNew));
        if (!changed) return;
        afterChange(QStringLiteral("%1 öğrencinin işyeri adı değişti.").arg(*changed));
    });
}

} // namespace orvan
