// reference/screens/sinif_kodu_isleme.cpp — see sinif_kodu_isleme.h.
#include "reference/screens/sinif_kodu_isleme.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/tick_list.h"

#include <algorithm>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QTreeView>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kTick = QStringLiteral("secili");
constexpr int kChoiceWidth = 24; // characters

QString codeOf(const Profession& profession) {
    return QStringLiteral("%1/%2").arg(profession.version).arg(profession.code);
}

// Ticked by Space or the mouse; the text of an item is its user data.
QListWidget* makeTicks(const char* name, const QString& title, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(QString::fromLatin1(name));
    list->setAccessibleName(title);
    list->setMinimumHeight(list->fontMetrics().lineSpacing() * 4);
    return list;
}

QStringList ticked(const QListWidget* list) {
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->checkState() == Qt::Checked) texts << list->item(i)->data(Qt::UserRole).toString();
    return texts;
}

// What was ticked stays so while it is still there.
void offerTicks(QListWidget* list, const QStringList& texts, const QString& wordsForEmpty) {
    const QStringList before = ticked(list);
    const QSignalBlocker quiet(list);
    list->clear();
    for (const QString& text : texts) {
        auto* item = new QListWidgetItem(text.isEmpty() ? wordsForEmpty : text, list);
        item->setData(Qt::UserRole, text);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(before.contains(text) ? Qt::Checked : Qt::Unchecked);
    }
    if (list->count() > 0) list->setCurrentRow(0);
}

QLabel* labelFor(QWidget* field, const QString& text) {
    auto* label = new QLabel(text, field->parentWidget());
    label->setBuddy(field);
    return label;
}

} // namespace

sinif_kodu_isleme::sinif_kodu_isleme(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                     UserMemory& memory, QWidget* parent)
    : Screen(QStringLiteral("sinif_kodu_isleme"), title, dialogs, parent),
      assignment_(databases, dialogs, title) {
    build(memory);
    attempt(objectName(), [this] { offer(); });
}

void sinif_kodu_isleme::build(UserMemory& memory) {
    auto* middle = new QHBoxLayout;
    middle->addWidget(buildChoices());
    middle->addWidget(buildStudents(memory), 1);
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    layout->addWidget(result_);
    layout->addLayout(buildButtons());
    setFocusProxy(profession_);
}

QWidget* sinif_kodu_isleme::buildChoices() {
    auto* side = new QWidget(this);
    profession_ = new ChoiceList(kChoiceWidth, side);
    profession_->setObjectName(QStringLiteral("meslek"));
    stages_ = makeTicks("donemler", QStringLiteral("Dönemler"), side);
    classes_ = makeTicks("siniflar", QStringLiteral("Şimdiki sınıflar"), side);
    classes_->setToolTip(QStringLiteral("Hiçbiri işaretli değilse bütün sınıflar"));
    auto* list = makeButton("listele", QStringLiteral("Öğre&ncileri Listele"),
                            QStringLiteral("Seçilen meslek, dönem ve sınıflardaki öğrencileri gösterir"),
                            side, [this] { listStudents(); });
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(labelFor(profession_, QStringLiteral("Meslek ve program:")));
    layout->addWidget(profession_);
    layout->addWidget(labelFor(stages_, QStringLiteral("Dönemler:")));
    layout->addWidget(stages_, 1);
    layout->addWidget(labelFor(classes_, QStringLiteral("Şimdiki sınıflar (isteğe bağlı):")));
    layout->addWidget(classes_, 2);
    layout->addWidget(list);
    side->setMaximumWidth(profession_->sizeHint().width() * 3 / 2);
    connect(profession_, &ChoiceList::codeChanged, this, [this] {
        attempt(objectName(), [this] {
            offerClasses();
            choiceChanged();
        });
    });
    connect(profession_, &ChoiceList::enterPressed, this, [this] { stages_->setFocus(Qt::TabFocusReason); });
    connect(stages_, &QListWidget::itemChanged, this, &sinif_kodu_isleme::choiceChanged);
    connect(classes_, &QListWidget::itemChanged, this, &sinif_kodu_isleme::choiceChanged);
    return side;
}

QWidget* sinif_kodu_isleme::buildStudents(UserMemory& memory) {
    students_ = new TickList(QStringLiteral("sinifOgrencileri"),
                             {{QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
                              {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 14},
                              {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 14},
                              {QStringLiteral("donem"), QStringLiteral("Dönem"), ListKind::Text, 8},
                              {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 10}},
                             {{kTick, QStringLiteral("İşaret")}}, dialogs(), memory, this);
    students_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    students_->setEmptyText(QStringLiteral("Meslek ve dönem seçip “Öğrencileri Listele” düğmesine basınız."));
    connect(students_, &TickList::tickChanged, this, &sinif_kodu_isleme::nameToggle);
    return students_;
}

QBoxLayout* sinif_kodu_isleme::buildButtons() {
    toggle_ = makeButton("tumu", QStringLiteral("&Tümü İşaretli"),
                         QStringLiteral("Listedeki bütün öğrencileri işaretler ya da işaretlerini kaldırır"),
                         this, [this] { toggleAll(); });
    target_ = new ChoiceList(18, this);
    target_->setObjectName(QStringLiteral("hedefSinif"));
    ignoreMarks_ = new QCheckBox(QStringLiteral("İşaretlere bak&ma"), this);
    ignoreMarks_->setObjectName(QStringLiteral("isaretsizler"));
    ignoreMarks_->setToolTip(QStringLiteral("Listedeki öğrencilerin hepsinin sınıfı değişir"));
    save_ = makeButton("kaydet", QStringLiteral("Kay&det"),
                       QStringLiteral("Öğrencileri seçilen sınıfa aktarır (önce sorar, Ctrl+S)"), this,
                       [this] { save(); });
    auto* output = makeButton("yazdir", QStringLiteral("Yazdı&r"),
                              QStringLiteral("İşaretli öğrencilerin listesini yazdırır"), this,
                              [this] { students_->outputActions().front()->trigger(); });
    auto* leave = makeButton("kapat", QStringLiteral("&Kapat"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(toggle_);
    buttons->addStretch(1);
    buttons->addWidget(labelFor(target_, QStringLiteral("Aktarılacak sını&f:")));
    buttons->addWidget(target_);
    buttons->addWidget(ignoreMarks_);
    for (QPushButton* button : {save_, output, leave})
        buttons->addWidget(button);
    connect(target_, &ChoiceList::enterPressed, this, [this] { save_->setFocus(Qt::TabFocusReason); });
    return buttons;
}

void sinif_kodu_isleme::offer() {
    professions_ = assignment_.professions();
    std::vector<Choice> choices;
    for (const Profession& profession : professions_)
        choices.push_back({codeOf(profession), QStringLiteral("%1 - %2 (%3. program)")
                                                   .arg(profession.code, profession.name)
                                                   .arg(profession.version)});
    profession_->setChoices(std::move(choices));
    offerTicks(stages_, assignment_.stages(), {});
    offerClasses();
    std::vector<Choice> targets;
    for (const QString& name : assignment_.targets())
        targets.push_back({name, name});
    target_->setChoices(std::move(targets));
}

void sinif_kodu_isleme::offerClasses() {
    const ClassSelection chosen = selection();
    offerTicks(classes_,
               chosen.profession.isEmpty() ? QStringList()
                                           : assignment_.classes(chosen.profession, chosen.version),
               QStringLiteral("(sınıfı yok)"));
}

ClassSelection sinif_kodu_isleme::selection() const {
    ClassSelection selection;
    for (const Profession& profession : professions_)
        if (codeOf(profession) == profession_->code()) {
            selection.profession = profession.code;
            selection.version = profession.version;
        }
    selection.stages = ticked(stages_);
    selection.classes = ticked(classes_);
    return selection;
}

// The list of other choices must not be changed by mistake.
void sinif_kodu_isleme::choiceChanged() {
    result_->clear();
    shown_.reset();
    showStudents({});
}

void sinif_kodu_isleme::listStudents() {
    profession_->settle();
    attempt(QStringLiteral("Öğrenci listesi"), [this] {
        const auto students = assignment_.students(selection());
        if (!students) return;
        shown_ = selection();
        showStudents(*students);
        result_->setText(students->empty() ? QStringLiteral("Bu seçime uyan öğrenci yok.") : QString());
        students_->setFocus(Qt::OtherFocusReason);
    });
}

void sinif_kodu_isleme::showStudents(const std::vector<ClassStudent>& students) {
    listed_ = students;
    std::vector<TickRow> rows;
    for (size_t i = 0; i < listed_.size(); ++i) {
        const ClassStudent& s = listed_[i];
        rows.push_back(
            {QString::number(i), {}, {s.number, s.name, s.surname, s.stage, s.className}, {false}});
    }
    students_->setRows(std::move(rows));
    nameToggle();
}

// The button says what it does next.
void sinif_kodu_isleme::nameToggle() {
    const bool all =
        !listed_.empty() && students_->tickedRows().size() == static_cast<qsizetype>(listed_.size());
    toggle_->setText(all ? QStringLiteral("&Tümü İşaretsiz") : QStringLiteral("&Tümü İşaretli"));
}

void sinif_kodu_isleme::toggleAll() {
    const bool all = students_->tickedRows().size() == static_cast<qsizetype>(listed_.size());
    students_->setAllTicked(kTick, !all);
    nameToggle();
}

void sinif_kodu_isleme::refresh() {
    attempt(objectName(), [this] {
        offer();
        if (!shown_ || !students_->tickedRows().isEmpty()) return;
        if (const auto students = assignment_.students(*shown_)) showStudents(*students);
    });
}

bool sinif_kodu_isleme::save() {
    if (saving_) return false;
    bool saved = false;
    const QScopedValueRollback saving(saving_, true);
    attempt(QStringLiteral("Sınıf aktarma"), [&] { saved = trySave(); });
    return saved;
}

bool sinif_kodu_isleme::trySave() {
    target_->settle();
    if (!shown_) {
        result_->setText(QStringLiteral("Önce öğrencileri listeleyiniz."));
        return false;
    }
    std::vector<size_t> marked;
    for (const QString& key : students_->tickedRows())
        marked.push_back(key.toULongLong());
    const Marks marks = ignoreMarks_->isChecked() ? Marks::Ignore : Marks::Heed;
    const auto result = assignment_.assign(target_->code(), listed_, marked, marks);
    if (!result) return false;
    QString words = QStringLiteral("%1 öğrencinin sınıfı değişti.").arg(result->changed);
    if (!result->skipped.isEmpty())
        words += QStringLiteral(" Başka bir bilgisayarda değiştirildiği için atlanan %1 öğrenci: %2")
                     .arg(result->skipped.size())
                     .arg(result->skipped.join(QStringLiteral(", ")));
    if (const auto students = assignment_.students(*shown_)) showStudents(*students);
    offerClasses();
    result_->setText(words);
    if (result->changed > 0) emit recordsChanged();
    return true;
}

} // namespace orvan
