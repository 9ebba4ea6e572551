// Order and filter of a list's rows.
#include "support/keyboard.h"
#include "widgets/list_rows.h"

#include <QDate>

namespace orvan {
namespace {

std::vector<ListColumn> oneColumn(ListKind kind) {
    return {{QStringLiteral("deger"), QStringLiteral("Değer"), kind}};
}

QStringList shown(const ListRows& rows) {
    QStringList texts;
    for (size_t row = 0; row < rows.shownCount(); ++row)
        texts << rows.text(row, 0);
    return texts;
}

ListRows listOf(ListKind kind, const QList<QVariant>& cells) {
    ListRows rows(oneColumn(kind));
    std::vector<ListRow> given;
    for (const QVariant& cell : cells)
        given.push_back({cell});
    rows.setRows(std::move(given));
    return rows;
}

TEST(ListRows, SortsByValueAndInTurkishOrder) {
    struct Case {
        const char* title;
        ListKind kind;
        QList<QVariant> given;
        QStringList ascending;
    };
    const Case cases[] = {
        {"Turkish letters stand in their own places",
         ListKind::Text,
         {"Şahin", "Zengin", "İnci", "Sarı", "Işık", "Çelik", "Cömert", "Ünal", "Uzun", "Doğan"},
         {"Cömert", "Çelik", "Doğan", "Işık", "İnci", "Sarı", "Şahin", "Uzun", "Ünal", "Zengin"}},
        {"case does not matter", ListKind::Text, {"ali", "Ak", "ALİ B"}, {"Ak", "ali", "ALİ B"}},
        {"numbers by value, empty first", ListKind::Number, {10, 9, QVariant(), 100}, {"", "9", "10", "100"}},
        {"money with decimal comma",
         ListKind::Money,
         {QVariant("1.000,50"), QVariant(999.9), QVariant("12")},
         {"12", "999,90", "1.000,50"}},
        {"dates by day, texts that are no date last",
         ListKind::Date,
         {"02.01.2009", "31.12.2008", "bilinmiyor", QDate(2008, 12, 30)},
         {"30.12.2008", "31.12.2008", "02.01.2009", "bilinmiyor"}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.title);
        ListRows rows = listOf(one.kind, one.given);
        rows.sortBy(0, Qt::AscendingOrder);
        EXPECT_EQ(shown(rows), one.ascending);
        QStringList descending = one.ascending;
        std::reverse(descending.begin(), descending.end());
        rows.sortBy(0, Qt::DescendingOrder);
        EXPECT_EQ(shown(rows), descending);
    }
}

TEST(ListRows, EqualRowsKeepTheirOrderBothWays) {
    ListRows rows({{"a", "A", ListKind::Text}, {"b", "B", ListKind::Number}});
    rows.setRows({{"x", 1}, {"x", 2}, {"w", 3}, {"x", 4}});
    rows.sortBy(0, Qt::DescendingOrder);
    std::vector<size_t> order;
    for (size_t row = 0; row < rows.shownCount(); ++row)
        order.push_back(rows.given(row));
    EXPECT_EQ(order, (std::vector<size_t>{0, 1, 3, 2}));
}

TEST(ListRows, FindsByTurkishRulesEveryWordInAnyColumn) {
    const struct {
        const char* typed;
        std::vector<size_t> found;
    } cases[] = {
        {"", {0, 1, 2, 3}}, {"i", {0, 3}},     {"I", {0, 1}},         {"inci", {0}},     {"İNCİ", {0}},
        {"ışık", {1}},      {"isik", {}},      {"0101", {0, 1}},      {"yıl 0101", {0}}, {"kaya  ŞULE", {2}},
        {"2009", {3}},      {"1.250,00", {1}}, {"   ", {0, 1, 2, 3}},
    };
    ListRows rows({{"no", "No"},
                   {"ad", "Ad"},
                   {"soyad", "Soyad"},
                   {"tarih", "Tarih", ListKind::Date},
                   {"tutar", "Tutar", ListKind::Money}});
    rows.setRows({{"010100001", "İnci", "Yılmaz", QVariant(), QVariant()},
                  {"010100002", "Işık", "Kara", QVariant(), 1250.0},
                  {"020500001", "Şule", "Kaya", QVariant(), QVariant()},
                  {"020500002", "Mehmet Ali", "Demir", QDate(2009, 5, 1), QVariant()}});
    for (const auto& one : cases) {
        SCOPED_TRACE(one.typed);
        rows.setFilter(QString::fromUtf8(one.typed));
        std::vector<size_t> found;
        for (size_t row = 0; row < rows.shownCount(); ++row)
            found.push_back(rows.given(row));
        EXPECT_EQ(found, one.found);
    }
}

TEST(ListRows, NewRowsKeepFilterAndOrder) {
    ListRows rows(std::vector<ListColumn>{{"ad", "Ad"}});
    rows.setRows({{"Ali"}, {"Veli"}});
    rows.sortBy(0, Qt::DescendingOrder);
    rows.setFilter("l");
    rows.setRows({{"Ali"}, {"Can"}, {"Selma"}});
    EXPECT_EQ(shown(rows), (QStringList{"Selma", "Ali"}));
    EXPECT_EQ(rows.shownAt(1), -1);
    EXPECT_EQ(rows.shownAt(2), 0);
}

} // namespace
} // namespace orvan
