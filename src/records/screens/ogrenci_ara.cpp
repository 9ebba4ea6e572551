// records/screens/ogrenci_ara.cpp — see ogrenci_ara.h.
#include "records/screens/ogrenci_ara.h"

#include "core/values.h"
#include "records/identity_number.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/form.h"
#include "widgets/grid.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kNumber = QStringLiteral("kutukNo");
const QString kIdentityNo = QStringLiteral("kimlikNo");
const QString kName = QStringLiteral("adi");
const QString kSurname = QStringLiteral("soyadi");
const QString kFather = QStringLiteral("babaAdi");
const QString kWorkplace = QStringLiteral("isyeri");

std::vector<FormField> fields(const Schema& schema) {
    const auto width = [&](const char* field) { return schema.width("OgrenciBilgisi", field); };
    const QString terms = QStringLiteral("Aranan kişi"), numbers = QStringLiteral("Numaraları ve işyeri");
    return {
        {kName, QStringLiteral("A&dı:"), FieldKind::Text, width("Ogr_Adi"), 20, 0, terms},
        {kSurname, QStringLiteral("&Soyadı:"), FieldKind::Text, width("Ogr_Soyadi"), 20, 0, terms},
        {kFather, QStringLiteral("Baba adı:"), FieldKind::Text, width("Ogr_Nufus_Baba_Adi"), 20, 0, terms},
        {kIdentityNo, QStringLiteral("T.&C. Kimlik No:"), FieldKind::Code, kIdentityNumberLength, 14, 1,
         numbers},
        {kNumber, QStringLiteral("Kütük &No:"), FieldKind::Code, width("Ogr_Numarasi"), 14, 1, numbers},
        {kWorkplace, QStringLiteral("İşy&eri:"), FieldKind::Text, width("Ogr_calistigi_isyerinin_adi"), 30, 1,
         numbers},
    };
}

std::vector<ListColumn> columns() {
    return {
        {QStringLiteral("yer"), QStringLiteral("Nerede"), ListKind::Text, 26},
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 14},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 14},
        {QStringLiteral("kimlikNo"), QStringLiteral("T.C. Kimlik No"), ListKind::Text, 12},
        {QStringLiteral("babaAdi"), QStringLiteral("Baba adı"), ListKind::Text, 12},
        {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 20},
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 8},
        {QStringLiteral("seviye"), QStringLiteral("Dönem"), ListKind::Text, 9},
        {QStringLiteral("kayitNo"), QStringLiteral("Kayıt No"), ListKind::Number, 8},
        {QStringLiteral("isyeri"), QStringLiteral("İşyeri"), ListKind::Text, 26},
        {QStringLiteral("sira"), QStringLiteral("Sıra"), ListKind::Number, 5, false},
    };
}

} // namespace

OgrenciARA::OgrenciARA(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                       QWidget* parent)
    : Screen(QStringLiteral("OgrenciARA"), title, dialogs, parent), databases_(databases) {
    build(memory);
}

void OgrenciARA::build(UserMemory& memory) {
    // made in the order in which Tab goes through them
    form_ = new EntryForm(fields(databases_.schema()), this);
    auto* start = makeButton("ara", QStringLiteral("Öğrenci A&ra"),
                             QStringLiteral("Bütün düzeylerde ve arşivlerde arar (alanların sonunda Enter)"),
                             this, [this] { search(); });
    auto* clean = makeButton("temizle", QStringLiteral("Te&mizle"), QStringLiteral("Alanları boşaltır"), this,
                             [this] { clear(); });
    answer_ = new QLabel(this);
    answer_->setObjectName(QStringLiteral("sonuc"));
    answer_->setTextFormat(Qt::PlainText);
    answer_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    answer_->setWordWrap(true);
    answer_->setText(QStringLiteral("Adın, soyadın veya işyerinin bir parçası, numaraların başı yeter."));
    grid_ = new ListGrid(QStringLiteral("arananOgrenciler"), columns(), dialogs(), memory, this);
    grid_->setKeyColumn(columns().size() - 1);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Aranan öğrenciler burada görünür."));
    grid_->setPinnedColumns(2);
    auto* show = makeButton(
        "ac", QStringLiteral("&Kaydı Aç"),
        QStringLiteral("Seçili öğrencinin kaydını açar (listede Enter veya çift tıklama)"), this, [this] {
            if (const auto row = grid_->currentRow()) open(*row);
        });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* searchLine = new QHBoxLayout;
    searchLine->addStretch(1);
    searchLine->addWidget(start);
    searchLine->addWidget(clean);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(show);
    buttons->addWidget(leave);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(form_);
    layout->addLayout(searchLine);
    layout->addWidget(answer_);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
    setFocusProxy(form_->editor(kName));

    connect(form_, &EntryForm::lastFieldDone, this, [this] { search(); });
    connect(grid_, &ListGrid::activated, this, &OgrenciARA::open);
}

SearchTerms OgrenciARA::terms() const {
    return {form_->value(kNumber),     form_->value(kName),      form_->value(kSurname),
            form_->value(kIdentityNo), form_->value(kWorkplace), form_->value(kFather)};
}

void OgrenciARA::search() {
    searched_ = terms();
    if (searched_.isEmpty()) {
        dialogs().message(QStringLiteral("Aramak için alanlardan en az birini doldurunuz."),
                          QStringLiteral("Uyarı"), Icon::Warning);
        form_->focusField(kName);
        return;
    }
    run();
    if (!result_.found.empty()) grid_->view()->setFocus();
}

void OgrenciARA::refresh() {
    if (!searched_.isEmpty()) run();
}

bool OgrenciARA::asksForIdentityNumberAlone() const {
    const SearchTerms& t = searched_;
    return t.identityNo.trimmed().size() == kIdentityNumberLength &&
           SearchTerms{t.number, t.name, t.surname, {}, t.workplace, t.fatherName}.isEmpty();
}

void OgrenciARA::run() {
    attempt(objectName(), [this] {
        if (asksForIdentityNumberAlone()) {
            const IdentitySearch search = findByIdentityNumber(databases_.folder(), searched_.identityNo);
            result_ = search.result;
            showResult(search.text());
            return;
        }
        result_ = searchStudents(allSearchPlaces(databases_.folder()), searched_, dialogs());
        QStringList lines{result_.found.empty()
                              ? QStringLiteral("Aranan öğrenci hiçbir düzeyde ve arşivde bulunamadı.")
                              : QStringLiteral("%1 kayıt bulundu.").arg(result_.found.size())};
        if (result_.stopped) lines << QStringLiteral("Arama durduruldu; aranmayan dosyalar kaldı.");
        if (!result_.unreadable.isEmpty())
            lines << QStringLiteral("Okunamayan dosyalar:") << result_.unreadable;
        showResult(lines.join(QLatin1Char('\n')));
    });
}

ListRow OgrenciARA::rowOf(const FoundStudent& s) const {
    return {result_.places[s.place].words(),
            s.number,
            s.name,
            s.surname,
            s.identityNo,
            s.fatherName,
            s.profession.isEmpty() ? s.professionCode : s.profession,
            s.className,
            s.stage,
            s.registrationNo,
            s.workplace};
}

void OgrenciARA::showResult(const QString& sentence) {
    answer_->setText(sentence);
    std::vector<ListRow> rows;
    for (size_t i = 0; i < result_.found.size(); ++i) {
        rows.push_back(rowOf(result_.found[i]));
        rows.back().emplace_back(static_cast<int>(i) + 1);
    }
    grid_->setEmptyText(QStringLiteral("Aranan öğrenci bulunamadı."));
    grid_->setNotes(sentence.split(QLatin1Char('\n')));
    grid_->setRows(std::move(rows));
}

void OgrenciARA::clear() {
    for (const QString& field : {kNumber, kIdentityNo, kName, kSurname, kFather, kWorkplace})
        form_->setValue(field, {});
    form_->focusField(kName);
}

void OgrenciARA::open(size_t row) {
    const FoundStudent& student = result_.found[row];
    const SearchPlace& place = result_.places[student.place];
    if (QFileInfo(place.file) == QFileInfo(databases_.levelFile())) {
        emit openRequested(QStringLiteral("ogrencikayit"), student.number);
        return;
    }
    dialogs().message(
        QStringLiteral("%1 %2 (%3) şimdi çalışılan bilgilerde değil.\nYeri: %4\nDosya: %5\n\n"
                       "Kaydını açmak için “Çalışma” menüsünden önce o düzeye, arşivdeyse ardından o arşive "
                       "geçiniz.")
            .arg(student.name, student.surname, student.number, place.words(),
                 QFileInfo(place.file).fileName()),
        windowTitle().remove(QStringLiteral("[*]")));
}

} // namespace orvan
