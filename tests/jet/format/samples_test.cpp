// Everything the format layer can take apart in files of the original engine goes together again to the same
// bytes.
#include "jet/format/bytes.h"
#include "jet/format/field_size.h"
#include "jet/format/long_value.h"
#include "jet/format/properties.h"
#include "jet/format/sample_file.h"
#include "support/shared_samples.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace jet;
using format_test::SampleFile;

void forEachSample(int version, const std::function<void(SampleFile&)>& visit) {
    for (const auto& path : orvan_test::samples()) {
        SCOPED_TRACE(path.filename().string());
        SampleFile file(path);
        if (version == 0 || file.layout().version == version) visit(file);
    }
}

// Where two byte strings begin to differ; empty when they do not.
std::string difference(const Bytes& ours, const Bytes& theirs) {
    if (ours == theirs) return {};
    const auto at = std::ranges::mismatch(ours, theirs).in1 - ours.begin();
    return "lengths " + std::to_string(ours.size()) + " and " + std::to_string(theirs.size()) +
           ", first difference at " + std::to_string(at);
}

bool madeByOriginalEngine(SampleFile& file) { return file.header().password.empty(); }

StoredField storedField(const RowView& row, size_t i) {
    StoredField field;
    field.null = row.isNull(i);
    if (row.def().fields[i].type == Type::Boolean) field.boolean = row.boolean(i);
    field.bytes.assign(row.raw(i).begin(), row.raw(i).end());
    return field;
}

bool hasFixedNull(const RowView& row) {
    for (size_t i = 0; i < row.fieldCount(); ++i)
        if (row.def().fields[i].fixedLength && row.isNull(i)) return true;
    return false;
}

TEST(Samples, NamesSayVersionAndHeaderAgrees) {
    ORVAN_NEED_SAMPLES();
    for (const auto& path : orvan_test::samples()) {
        const std::string name = path.filename().string();
        SampleFile file(path);
        EXPECT_EQ(file.layout().version, name.find("jet3") != std::string::npos ? 3 : 4) << name;
        EXPECT_EQ(file.header().sortOrder, name.starts_with("tr-") ? kTurkishSort : kGeneralSort) << name;
        EXPECT_EQ(file.header().codePage, name.starts_with("tr-") ? 1254 : 1252) << name;
        EXPECT_EQ(file.header().password, name.starts_with("tr-password") ? "Şifre12" : "") << name;
        EXPECT_EQ(file.header().encodingKey != 0, name.starts_with("encoded")) << name;
    }
}

TEST(Samples, DefinitionsSerializeToTheSameBytes) {
    ORVAN_NEED_SAMPLES();
    size_t definitions = 0;
    forEachSample(4, [&](SampleFile& file) {
        for (const TableDef& def : file.tables()) {
            Bytes image = file.image(def.page);
            const size_t size = get32(image, file.layout().tdefLength) + file.layout().tdefTrailer;
            ASSERT_LE(size, image.size());
            image.resize(size);
            put32(image, file.layout().tdefNext, 0);
            EXPECT_EQ(difference(serializeTableDef(file.layout(), def), image), "") << def.name;
            ++definitions;
        }
    });
    EXPECT_GT(definitions, 100u);
}

TEST(Samples, EveryValueOfEveryRowCanBeRead) {
    ORVAN_NEED_SAMPLES();
    size_t rows = 0, longValues = 0;
    forEachSample(0, [&](SampleFile& file) {
        for (const TableDef& def : file.tables()) {
            size_t count = 0;
            file.forEachRow(def, [&](const RowView& row) {
                ++count;
                for (size_t i = 0; i < row.fieldCount(); ++i) {
                    if (!def.fields[i].isLongValue()) {
                        EXPECT_EQ(row.value(i).isNull(), row.isNull(i));
                    } else if (!row.isNull(i)) {
                        readLongValue(file.pages(), file.layout(), row.raw(i));
                        ++longValues;
                    }
                }
            });
            if (!def.name.starts_with("MSys")) {
                EXPECT_EQ(count, def.rowCount) << def.name;
            }
            rows += count;
        }
    });
    EXPECT_GT(rows, 6000u);
    EXPECT_GT(longValues, 700u);
}

TEST(Samples, RowsEncodeToTheSameBytes) {
    ORVAN_NEED_SAMPLES();
    size_t rows = 0, compared = 0;
    forEachSample(4, [&](SampleFile& file) {
        for (const TableDef& def : file.tables()) {
            // Dropped columns leave their data in old rows; those rows are not made again.
            if (def.fields.size() != def.maxColumns) continue;
            std::vector<StoredField> fields(def.fields.size());
            Bytes again;
            file.forEachRow(def, [&](const RowView& row) {
                if (get16(row.bytes(), 0) != def.maxColumns) return;
                for (size_t i = 0; i < fields.size(); ++i)
                    fields[i] = storedField(row, i);
                encodeRow(file.layout(), def, fields, again);
                RowView view;
                view.attach(file.layout(), def, again);
                for (size_t i = 0; i < fields.size(); ++i)
                    EXPECT_TRUE(std::ranges::equal(view.raw(i), row.raw(i)))
                        << def.name << ' ' << def.fields[i].name;
                // A row that shrank keeps its old length, and a null fixed field whatever lay there.
                EXPECT_LE(again.size(), row.bytes().size()) << def.name;
                ++rows;
                if (again.size() != row.bytes().size() || hasFixedNull(row)) return;
                EXPECT_TRUE(std::ranges::equal(again, row.bytes())) << def.name;
                ++compared;
            });
        }
    });
    EXPECT_GT(rows, 5000u);
    EXPECT_GT(compared, 4000u);
}

TEST(Samples, TextsCompressAsTheOriginalEngineDoes) {
    ORVAN_NEED_SAMPLES();
    size_t texts = 0, compressed = 0;
    forEachSample(4, [&](SampleFile& file) {
        if (!madeByOriginalEngine(file)) return;
        for (const TableDef& def : file.tables())
            file.forEachRow(def, [&](const RowView& row) {
                std::string utf8;
                Bytes again;
                for (size_t i = 0; i < row.fieldCount(); ++i) {
                    const FieldDef& field = def.fields[i];
                    if (!field.isText() || field.fixedLength || row.isNull(i)) continue;
                    const auto raw = row.raw(i);
                    const Bytes stored = field.type == Type::Memo
                                             ? readLongValue(file.pages(), file.layout(), raw)
                                             : Bytes(raw.begin(), raw.end());
                    decodeText(file.layout(), 0, stored, utf8);
                    const bool isCompressed = stored.size() > 1 && stored[0] == 0xFF && stored[1] == 0xFE;
                    // Memos of system tables are compressed also where their column does not say so.
                    encodeText(utf8, field.compressed || isCompressed, again);
                    EXPECT_EQ(difference(again, stored), "") << def.name << '.' << field.name << ": " << utf8;
                    ++texts;
                    compressed += isCompressed;
                }
            });
    });
    EXPECT_GT(texts, 1500u);
    EXPECT_GT(compressed, 500u);
}

TEST(Samples, PropertiesSerializeToTheSameBytes) {
    ORVAN_NEED_SAMPLES();
    size_t blobs = 0;
    forEachSample(0, [&](SampleFile& file) {
        const TableDef catalog = file.definition(kCatalogPage);
        const size_t lvProp = *catalog.findField("LvProp");
        file.forEachRow(catalog, [&](const RowView& row) {
            if (row.isNull(lvProp)) return;
            const Bytes blob = readLongValue(file.pages(), file.layout(), row.raw(lvProp));
            const PropertySet set = PropertySet::parse(blob);
            ++blobs;
            if (file.layout().version == 4 && !set.empty()) {
                EXPECT_EQ(difference(set.serialize(), blob), "");
            }
        });
    });
    EXPECT_GT(blobs, 50u);
}

TEST(Samples, EveryDataPageIsFreeOfContradictions) {
    ORVAN_NEED_SAMPLES();
    forEachSample(0, [&](SampleFile& file) {
        for (const TableDef& def : file.tables())
            UsageMap(file.pages(), file.layout(), RowId::fromPacked(def.ownedMapPointer))
                .forEach([&](PageNo number) {
                    const PageRef page = file.pages().read(number);
                    EXPECT_EQ(data_page::contradiction(file.layout(), page.bytes()), "")
                        << def.name << " " << number;
                    EXPECT_EQ(data_page::owner(file.layout(), page.bytes()), def.page);
                });
    });
}

} // namespace
