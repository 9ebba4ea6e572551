#include "jet/copy/content.h"

#include "jet/format/bytes.h"
#include "jet/table/catalog.h"
#include "jet/table/definition_store.h"

#include <algorithm>
#include <map>

namespace copy_test {
namespace {

using namespace jet;

class Content {
  public:
    Content(Database& database, Of what) : database_(database), what_(what) {
        for (const std::string& name : database.tableNames(TableKinds::All))
            names_[static_cast<int32_t>(database.tableDef(name).page)] = name;
    }

    std::vector<std::string> lines() {
        if (what_ == Of::Everything) header();
        for (const auto& [id, name] : names_)
            if (systemTableName(static_cast<PageNo>(id)).empty() && wanted(database_.tableDef(name)))
                table(name);
        systemRows("MSysRelationships", {});
        systemRows("MSysQueries", {"ObjectId"});
        if (what_ == Of::Everything) {
            systemRows("MSysObjects", {"Id", "ParentId"});
            systemRows("MSysACEs", {"ObjectId"});
        }
        std::sort(lines_.begin(), lines_.end());
        return std::move(lines_);
    }

  private:
    bool wanted(const TableDef& def) const { return what_ == Of::Everything || !def.system; }

    void header() {
        const DatabaseHeader& h = database_.header();
        lines_.push_back("header " + std::to_string(h.codePage) + " " + std::to_string(h.sortOrder.lcid) +
                         " " + std::to_string(h.encodingKey) + " " + std::to_string(h.creationDate) + " " +
                         h.password);
    }

    void table(const std::string& name) {
        const TableDef& def = database_.tableDef(name);
        const std::string head = "table " + name + " ";
        {
            const ReadScope read(database_.pages());
            const Layout& layout = database_.layout();
            const auto image = readDefinition(database_.pages(), layout, def.page);
            lines_.push_back(head + "counter " + std::to_string(get32(image, layout.tdefAutoNumber)));
        }
        if (what_ == Of::Everything)
            lines_.push_back(head + std::to_string(def.system) + std::to_string(def.hidden));
        for (size_t i = 0; i < def.fields.size(); ++i)
            lines_.push_back(head + "field " + std::to_string(i) + " " + fieldText(def.fields[i]));
        for (const IndexDef& index : def.indexes)
            lines_.push_back(head + "index " + indexText(def, index));
        for (const std::string& row : rowsOf(database_, name))
            lines_.push_back(head + "row " + row);
    }

    std::string fieldText(const FieldDef& f) const {
        std::string text = f.name + " " + std::to_string(int(f.type)) + " " + std::to_string(f.size) + " " +
                           (f.required ? "required " : "") + (f.allowZeroLength ? "empty " : "") +
                           (f.autoNumber ? "auto " : "") + (f.fixedLength ? "fixed " : "") + f.defaultValue;
        if (what_ == Of::Everything)
            text += " " + std::to_string(f.sortOrder.lcid) + " " + std::to_string(f.compressed) + " " +
                    std::to_string(f.flags) + " " + std::to_string(f.precision) + "." +
                    std::to_string(f.scale);
        return text;
    }

    std::string indexText(const TableDef& def, const IndexDef& index) const {
        std::string text = index.name;
        for (const IndexField& part : index.fields)
            text += " " + def.fields[part.field].name + (part.descending ? "-" : "+");
        for (const auto& [flag, word] : {std::pair(index.primary, " primary"),
                                         {index.unique, " unique"},
                                         {index.required, " required"},
                                         {index.ignoreNulls, " ignore"},
                                         {index.foreign, " foreign"}})
            if (flag) text += word;
        for (const IndexDef& other : def.indexes) // who stands on the same tree
            if (other.realNumber == index.realNumber) text += " ~" + other.name;
        if (index.foreign)
            text += " to " + names_.at(static_cast<int32_t>(index.relatedTable)) + " " +
                    std::to_string(index.relatedIndex) + " " + std::to_string(index.number) + " " +
                    std::to_string(index.cascadeUpdate) + std::to_string(index.cascadeDelete) +
                    std::to_string(index.relType);
        return text;
    }

    // Ids of tables are shown as names, properties by their bytes.
    void systemRows(const std::string& name, const std::vector<std::string>& ids) {
        const ReadScope read(database_.pages());
        Table table = database_.openTable(name);
        const TableDef def = table.def();
        for (Scan scan = table.scan(); scan.next();) {
            std::map<std::string, std::string> cells; // by name: the formats differ in the order
            for (size_t i = 0; i < def.fields.size(); ++i) {
                const Value value = scan.value(i);
                std::string text = value.isNull() ? "null" : value.toText();
                const bool id = std::find(ids.begin(), ids.end(), def.fields[i].name) != ids.end();
                if (id && names_.contains(static_cast<int32_t>(value.toInt())))
                    text = names_.at(static_cast<int32_t>(value.toInt()));
                cells[def.fields[i].name] = text;
            }
            std::string row = "row of " + name;
            for (const auto& [field, text] : cells)
                row += " | " + field + "=" + text;
            lines_.push_back(std::move(row));
        }
    }

    Database& database_;
    Of what_;
    std::map<int32_t, std::string> names_;
    std::vector<std::string> lines_;
};

} // namespace

std::vector<std::string> rowsOf(Database& database, const std::string& name) {
    const ReadScope read(database.pages());
    Table table = database.openTable(name);
    std::vector<std::string> rows;
    for (Scan scan = table.scan(); scan.next();) {
        std::string row;
        for (size_t i = 0; i < table.def().fields.size(); ++i) {
            const Value value = scan.value(i);
            row += (value.isNull() ? "null" : "'" + value.toText() + "'") + " | ";
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<std::string> contentOf(Database& database, Of what) { return Content(database, what).lines(); }

std::string difference(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    for (size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        const std::string was = i < before.size() ? before[i] : "(nothing)",
                          is = i < after.size() ? after[i] : "(nothing)";
        if (was != is) return "before: " + was.substr(0, 1500) + "\nafter:  " + is.substr(0, 1500);
    }
    return {};
}

} // namespace copy_test
