// reference/screens/frm_sigorta_sabit.cpp — the insurance constants and the minimum wages.
#include "reference/screens/frm_sigorta_sabit.h"

#include "reference/screens/constants_pages.h"
#include "reference/screens/wage_page.h"

namespace orvan {

namespace {

const QString kWagePage = QStringLiteral("asgariUcret");

void offer(FormPages& pages, const QString& field, std::vector<Choice> choices,
           const SchoolConstants& constants) {
    const QString stored = constants.text(field.toLatin1().constData());
    const auto has = [&](const Choice& choice) { return choice.code == stored; };
    if (!stored.isEmpty() && std::none_of(choices.begin(), choices.end(), has))
        choices.push_back({stored, stored});
    pages.choiceList(field)->setChoices(std::move(choices));
}

} // namespace

frmSigortaSabit::frmSigortaSabit(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                 UserMemory& memory, const Clock& clock, QWidget* parent)
    : ConstantsScreen(QStringLiteral("frmSigortaSabit"), title, insurancePages(databases.schema()), databases,
                      dialogs, memory, parent),
      wages_(new WagePage(title, databases, dialogs, memory, clock)) {
    pages().addPage(kWagePage, QStringLiteral("Asgari Ücret"), wages_);
    connect(wages_, &WagePage::dirtyChanged, this, [this] { checkUnsaved(); });
    connect(wages_, &WagePage::yearWanted, this, [this](int year) {
        const bool mayGo = !wages_->isDirty() || settleUnsaved();
        attempt(QStringLiteral("Asgari ücretler"),
                [&] { mayGo ? wages_->showYear(year) : wages_->stayInYear(); });
    });
    load();
}

void frmSigortaSabit::offerChoices(const SchoolConstants& constants) {
    offer(pages(), kPremiumTypeField,
          {{QStringLiteral("0"), QStringLiteral("0 - Ayın gün sayısına göre")},
           {QStringLiteral("1"), QStringLiteral("1 - Her ay 30 gün")}},
          constants);
    offer(pages(), kAgeRuleField,
          {{QStringLiteral("B"), QStringLiteral("B - Büyük ücretiyle")},
           {QStringLiteral("K"), QStringLiteral("K - Küçük ücretiyle")},
           {QStringLiteral("G"), QStringLiteral("G - Gün sayısına göre")}},
          constants);
    for (const QString& field : roundingFields())
        offer(pages(), field,
              {{QStringLiteral("1"), QStringLiteral("1 - Yuvarlanmaz")},
               {QStringLiteral("2"), QStringLiteral("2 - Yukarı yuvarlanır")},
               {QStringLiteral("3"), QStringLiteral("3 - Aşağı yuvarlanır")}},
              constants);
}

bool frmSigortaSabit::settleMore() {
    if (wages_->settle()) return true;
    pages().showPage(kWagePage);
    return false;
}

bool frmSigortaSabit::saveMore() {
    if (wages_->save()) return true;
    pages().showPage(kWagePage);
    return false;
}

bool frmSigortaSabit::moreIsDirty() const { return wages_->isDirty(); }
void frmSigortaSabit::discardMore() { wages_->revert(); }
void frmSigortaSabit::loadMore() { wages_->showYear(wages_->year()); }

} // namespace orvan
