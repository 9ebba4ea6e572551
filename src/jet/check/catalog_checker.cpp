// jet/check/catalog_checker.h. Reads the system tables with the format layer alone: a damaged catalog must
// not stand in the way of its own check.
#include "jet/check/catalog_checker.h"

#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/long_value.h"
#include "jet/format/properties.h"
#include "jet/format/row_codec.h"
#include "jet/table/catalog.h"
#include "jet/table/definition_store.h"

#include <algorithm>
#include <set>

namespace jet {

namespace {

ListedTable readTable(CheckContext& context, PageNo page, const std::string& name) {
    ListedTable table;
    const Bytes image = readDefinition(context.file, context.layout, page);
    table.def = parseTableDef(context.layout, page, image, context.codePage);
    table.def.name = name;
    for (PageNo at = page; at != 0; at = get32(context.file.read(at).bytes(), context.layout.tdefNext))
        table.pages.push_back(at); // readDefinition() has followed the same chain to its end
    return table;
}

// Rows that can be read, moved ones followed; damage is the table checker's business.
void forEachRow(CheckContext& context, const TableDef& def,
                const std::function<void(const RowView&)>& visit) {
    RowView view;
    context.map(RowId::fromPacked(def.ownedMapPointer)).forEach([&](PageNo number) {
        const PageRef page = context.file.read(number);
        for (unsigned i = 0; page.data()[0] == PageType::kData && i < 256; ++i) {
            try {
                if (i >= data_page::slotCount(context.layout, page.bytes())) return;
                Slot slot = data_page::slot(context.layout, page.bytes(), static_cast<uint16_t>(i));
                if (slot.deleted || slot.hidden) continue;
                if (!slot.pointer) {
                    view.attach(context.layout, def, page.bytes().subspan(slot.start, slot.length),
                                context.codePage);
                    visit(view);
                    continue;
                }
                const RowId at =
                    data_page::pointerTarget(context.layout, page.bytes(), static_cast<uint8_t>(i));
                const PageRef target = context.file.read(at.page);
                slot = data_page::slot(context.layout, target.bytes(), at.row);
                view.attach(context.layout, def, target.bytes().subspan(slot.start, slot.length),
                            context.codePage);
                visit(view);
            } catch (const Error&) {
                continue;
            }
        }
    });
}

struct CatalogRow {
    std::string name;
    int32_t id = 0, type = 0;
};

// Positions of the catalog's columns; Err::NoSuchItem when it is not the catalog.
struct CatalogColumns {
    explicit CatalogColumns(const TableDef& def)
        : id(position(def, "Id")), name(position(def, "Name")), type(position(def, "Type")),
          properties(position(def, "LvProp")) {}
    static size_t position(const TableDef& def, std::string_view name) {
        return static_cast<size_t>(&def.field(name) - def.fields.data());
    }
    size_t id, name, type, properties;
};

void checkProperties(CheckContext& context, const RowView& row, const CatalogColumns& at,
                     const std::string& name) {
    if (row.isNull(at.properties)) return;
    context.findings.guarded(name, 0, [&] {
        PropertySet::parse(readLongValue(context.file, context.layout, row.raw(at.properties)));
    });
}

std::vector<CatalogRow> readCatalog(CheckContext& context, const TableDef& catalog) {
    const CatalogColumns at(catalog);
    std::vector<CatalogRow> rows;
    forEachRow(context, catalog, [&](const RowView& row) {
        if (row.isNull(at.id) || row.isNull(at.name) || row.isNull(at.type)) {
            context.findings.add(catalog.name, 0, "Katalogda kimliği, adı ya da türü olmayan bir nesne var.");
            return;
        }
        CatalogRow found{.name = {}, .id = row.integer(at.id), .type = row.integer(at.type)};
        row.text(at.name, found.name);
        checkProperties(context, row, at, found.name);
        rows.push_back(std::move(found));
    });
    return rows;
}

// Err::NoSuchItem is not expected: the columns of the system's tables never change.
struct RelationColumns {
    explicit RelationColumns(const TableDef& def)
        : name(CatalogColumns::position(def, "szRelationship")),
          child(CatalogColumns::position(def, "szObject")),
          childField(CatalogColumns::position(def, "szColumn")),
          parent(CatalogColumns::position(def, "szReferencedObject")),
          parentField(CatalogColumns::position(def, "szReferencedColumn")) {}
    size_t name, child, childField, parent, parentField;
};

} // namespace

std::vector<ListedTable> listTables(CheckContext& context) {
    std::vector<ListedTable> tables;
    const std::string catalogName(systemTableName(kCatalogPage));
    const bool readable = context.findings.guarded(
        catalogName, kCatalogPage, [&] { tables.push_back(readTable(context, kCatalogPage, catalogName)); });
    if (!readable) return tables;
    std::vector<CatalogRow> rows;
    context.findings.guarded(catalogName, kCatalogPage,
                             [&] { rows = readCatalog(context, tables.front().def); });
    std::set<PageNo> seen;
    for (const CatalogRow& row : rows) {
        if (row.type != ObjectType::kTable) continue;
        const auto page = static_cast<PageNo>(row.id);
        if (!seen.insert(page).second) {
            context.findings.add(row.name, page, "Katalogda iki tablo aynı tanım sayfasını gösteriyor.");
            continue;
        }
        if (page == kCatalogPage) continue;
        context.findings.guarded(row.name, page < context.file.pageCount() ? page : 0,
                                 [&] { tables.push_back(readTable(context, page, row.name)); });
    }
    for (PageNo page = SystemPage::kObjects; page <= SystemPage::kRelationships; ++page)
        if (!seen.contains(page))
            context.findings.add(std::string(systemTableName(page)), page, "Sistem tablosu katalogda yok.");
    return tables;
}

void checkRelations(CheckContext& context, const std::vector<const TableDef*>& tables) {
    const auto find = [&tables](std::string_view name) -> const TableDef* {
        const auto at =
            std::ranges::find_if(tables, [name](const TableDef* def) { return sameName(def->name, name); });
        return at == tables.end() ? nullptr : *at;
    };
    const auto relations = std::ranges::find(tables, PageNo{SystemPage::kRelationships}, &TableDef::page);
    if (relations == tables.end()) return;
    const TableDef& def = **relations;
    context.findings.guarded(def.name, def.page, [&] {
        const RelationColumns at(def);
        forEachRow(context, def, [&](const RowView& row) {
            const std::string relation = row.value(at.name).toText();
            const auto checkSide = [&](size_t tableColumn, size_t fieldColumn) {
                const std::string table = row.value(tableColumn).toText(),
                                  field = row.value(fieldColumn).toText();
                const TableDef* named = find(table);
                if (!named)
                    context.findings.add(def.name, 0,
                                         "'" + relation + "' ilişkisi olmayan bir tabloyu gösteriyor: '" +
                                             table + "'.");
                else if (!named->findField(field))
                    context.findings.add(def.name, 0,
                                         "'" + relation + "' ilişkisi '" + table +
                                             "' tablosunda olmayan bir alanı gösteriyor: '" + field + "'.");
            };
            checkSide(at.child, at.childField);
            checkSide(at.parent, at.parentField);
        });
    });
}

} // namespace jet
