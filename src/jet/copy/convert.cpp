// jet/copy/convert.h
#include "jet/copy/convert.h"

#include "jet/copy/database_writer.h"
#include "jet/copy/source_rows.h"
#include "jet/format/properties.h"
#include "jet/index/sort_key.h"
#include "jet/pages/io_error.h"
#include "jet/table/catalog.h"

#include <algorithm>
#include <unordered_set>

namespace jet {

namespace {

class Conversion {
  public:
    Conversion(Database& source, const std::filesystem::path& out, const CopyOptions& options)
        : source_(source),
          sortOrder_(knowsSortOrder(source.header().sortOrder) ? source.header().sortOrder : kGeneralSort),
          progress_(options), writer_(out, {.header = newHeader()}, writerOptions(options)) {}

    void run(CopyReport& report) {
        if (sortOrder_ != source_.header().sortOrder)
            note("Dosyanın sıralama düzeni bilinmiyor; yenisinde Genel düzen kullanıldı.");
        std::vector<SourceTable> tables = sourceTables(source_);
        std::erase_if(tables, [](const SourceTable& table) { return table.system; });
        for (const SourceTable& table : tables)
            progress_.expect(source_.tableDef(table.name), source_.openTable(table.name).rowCount());
        for (const SourceTable& table : tables)
            report.rows += copyTable(table.name);
        report.tables = tables.size();
        copyObjects();
        copySystemRows(SystemPage::kQueries, "ObjectId");
        copySystemRows(SystemPage::kRelationships, {});
        for (std::string& each : writer_.finish())
            note(std::move(each));
        report.notes = std::move(notes_);
    }

  private:
    DatabaseHeader newHeader() const {
        DatabaseHeader header = source_.header();
        header.sortOrder = sortOrder_;
        header.creationDate = 0; // the older format has none
        return header;
    }

    WriterOptions writerOptions(const CopyOptions& options) {
        WriterOptions writer;
        writer.io = options.io;
        writer.memoryBytes = options.memoryBytes;
        writer.lenient = true; // texts may be equal in the new order that were not in the old one
        writer.step = [this] { progress_.step(); };
        return writer;
    }

    void note(std::string text) { notes_.push_back(std::move(text)); }

    // --- tables

    // What a Jet 4 file needs of it; where things lie is set by the writer.
    FieldDef converted(const FieldDef& old) const {
        constexpr uint8_t kept = ColumnFlag::kFixed | ColumnFlag::kNullable | ColumnFlag::kAutoNumber |
                                 ColumnFlag::kAutoGuid | ColumnFlag::kHyperlink;
        FieldDef field;
        field.name = old.name;
        field.type = old.type;
        field.size = old.size;
        field.autoNumber = old.autoNumber;
        field.fixedLength = old.fixedLength;
        field.columnNumber = old.columnNumber;
        field.precision = old.precision;
        field.scale = old.scale;
        field.flags = (old.flags & kept) | ColumnFlag::kNullable;
        field.compressed = old.isText();
        field.sortOrder = sortOrder_;
        return field;
    }

    static IndexDef converted(const IndexDef& old) {
        IndexDef index;
        index.name = old.name;
        index.fields = old.fields;
        index.primary = old.primary;
        index.unique = old.unique;
        index.required = old.required;
        index.ignoreNulls = old.ignoreNulls;
        index.foreign = old.foreign;
        index.number = old.number;
        index.realNumber = old.realNumber;
        index.type = old.type;
        index.relType = old.relType;
        index.cascadeUpdate = old.cascadeUpdate;
        index.cascadeDelete = old.cascadeDelete;
        index.relatedIndex = old.relatedIndex;
        index.relatedTable = old.relatedTable;
        return index;
    }

    TableDef converted(const TableDef& old) const {
        TableDef def;
        def.name = old.name;
        def.page = old.page;
        def.lastAutoNumber = old.lastAutoNumber;
        for (const FieldDef& field : old.fields)
            def.fields.push_back(converted(field));
        for (const IndexDef& index : old.indexes)
            def.indexes.push_back(converted(index));
        return def;
    }

    uint64_t copyTable(const std::string& name) {
        uint64_t rows = 0;
        try {
            Table table = source_.openTable(name);
            writer_.beginTable({.def = converted(countedDefinition(source_, table))});
            std::vector<Value> values(table.def().fields.size());
            forEachRow(table, [&](const Scan& scan) {
                for (size_t i = 0; i < values.size(); ++i)
                    values[i] = scan.value(i);
                writer_.addRow(values);
                ++rows;
            });
            for (const IndexOutcome& outcome : writer_.endTable())
                if (outcome.fate != IndexFate::Built)
                    note("“" + name + "” tablosu: " + outcome.reason +
                         (outcome.fate == IndexFate::Dropped
                              ? " Dizin yeni dosyada yok."
                              : " Dizin yinelenen değerlere açık oluşturuldu."));
        } catch (Error& error) {
            error.inTable(name);
            throw;
        }
        return rows;
    }

    // --- catalog

    // The row of a system table of the new file from one of the old: same names, other places.
    class RowMap {
      public:
        RowMap(const TableDef& from, const TableDef& to) : to_(to), values_(to.fields.size()) {
            for (const FieldDef& field : to.fields)
                from_.push_back(from.findField(field.name));
        }
        std::vector<Value>& read(const Scan& scan) {
            for (size_t i = 0; i < values_.size(); ++i)
                values_[i] = from_[i] ? scan.value(*from_[i]) : Value();
            return values_;
        }
        Value& operator[](std::string_view field) { return values_.at(to_.findField(field).value()); }

      private:
        const TableDef& to_;
        std::vector<std::optional<size_t>> from_;
        std::vector<Value> values_;
    };

    void copyObjects() {
        Table objects = source_.openTable(std::string(systemTableName(SystemPage::kObjects)));
        writer_.beginSystemTable(SystemPage::kObjects);
        RowMap row(objects.def(), writer_.def());
        size_t leftBehind = 0;
        forEachRow(objects, [&](const Scan& scan) {
            const auto& values = row.read(scan);
            const int type = static_cast<int>(row["Type"].toInt());
            const auto old = static_cast<int32_t>(row["Id"].toInt());
            const bool wanted = type == ObjectType::kTable
                                    ? writer_.hasTable(old)
                                    : type == ObjectType::kQuery || type == ObjectType::kRelation ||
                                          type == ObjectType::kLink || type == ObjectType::kOdbcLink;
            leftBehind += isAccessObject(type);
            if (!wanted) return;
            row["Id"] = writer_.newId(old);
            row["Owner"] = Value();
            row["LvProp"] = properties(row["LvProp"], row["Name"].toText());
            for (const char* binary : {"Lv", "LvModule", "LvExtra", "RmtInfoLong", "RmtInfoShort"})
                row[binary] = Value();
            kept_.insert(old);
            writer_.addRow(values);
        });
        writer_.endTable();
        if (leftBehind > 0)
            note(std::to_string(leftBehind) + " form, rapor, makro ya da modül eski biçimde kaldı; yeni "
                                              "dosyaya alınmadı.");
    }

    static bool isAccessObject(int type) {
        constexpr int kForm = -32768, kMacro = -32766, kReport = -32764, kModule = -32761;
        return type == kForm || type == kMacro || type == kReport || type == kModule;
    }

    Value properties(const Value& stored, const std::string& owner) {
        const Bytes* blob = stored.get<Bytes>();
        if (!blob) return {};
        try {
            Bytes made = PropertySet::parse(*blob, source_.header().codePage).serialize();
            return made.empty() ? Value() : Value(std::move(made));
        } catch (const Error&) {
            note("“" + owner + "” nesnesinin özellikleri okunamadı.");
            return {};
        }
    }

    // `object`: column with the id of the object a row belongs to; rows of objects left behind are left too.
    void copySystemRows(PageNo page, std::string_view object) {
        Table table = source_.openTable(std::string(systemTableName(page)));
        writer_.beginSystemTable(page);
        RowMap row(table.def(), writer_.def());
        forEachRow(table, [&](const Scan& scan) {
            const auto& values = row.read(scan);
            if (object.empty() || kept_.contains(static_cast<int32_t>(row[object].toInt())))
                writer_.addRow(values);
        });
        writer_.endTable();
    }

    Database& source_;
    SortOrder sortOrder_;
    CopyProgress progress_;
    DatabaseWriter writer_;
    std::vector<std::string> notes_;
    std::unordered_set<int32_t> kept_; // objects with a row in the new catalog, by old id
};

} // namespace

CopyReport convertDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                           const CopyOptions& options) {
    return copyDatabase(in, out, options, [&](Database& source, CopyReport& report) {
        if (source.layout().version != 3)
            throw Error(Err::InvalidArgument, "Dosya zaten Access 2000 biçiminde; dönüştürmek gerekmez.");
        Conversion(source, out, options).run(report);
    });
}

} // namespace jet
