// tests/jet/format/sample_file.h
#include "jet/format/sample_file.h"

#include "jet/format/bytes.h"

namespace format_test {

using namespace jet;

SampleFile::SampleFile(const std::filesystem::path& path) {
    PageFileOptions options;
    options.readOnly = true;
    file_ = PageFile::open(systemIo(), path, options, probePageSize);
    scope_ = std::make_unique<ReadScope>(*file_);
    header_ = readHeader(file_->read(0).bytes());
    if (auto codec = makePageCodec(header_.encodingKey)) file_->setCodec(std::move(codec));
}

Bytes SampleFile::image(PageNo page) {
    const PageRef first = file_->read(page);
    Bytes image(first.bytes().begin(), first.bytes().end());
    for (PageNo next = get32(image, layout().tdefNext); next != 0;) {
        const PageRef more = file_->read(next);
        const auto body = more.bytes().subspan(layout().tdefBodyOfNextPages);
        image.insert(image.end(), body.begin(), body.end());
        next = get32(more.bytes(), layout().tdefNext);
    }
    return image;
}

TableDef SampleFile::definition(PageNo page) {
    return parseTableDef(layout(), page, image(page), header_.codePage);
}

std::vector<TableDef> SampleFile::tables() {
    const TableDef catalog = definition(kCatalogPage);
    const size_t id = *catalog.findField("Id"), type = *catalog.findField("Type"),
                 name = *catalog.findField("Name");
    std::vector<TableDef> found;
    forEachRow(catalog, [&](const RowView& row) {
        if (row.integer(type) != 1) return;
        found.push_back(definition(static_cast<PageNo>(row.integer(id)) & 0xFFFFFF));
        row.text(name, found.back().name);
    });
    return found;
}

void SampleFile::forEachRow(const TableDef& def, const std::function<void(const RowView& row)>& visit) {
    RowView view;
    UsageMap(*file_, layout(), RowId::fromPacked(def.ownedMapPointer)).forEach([&](PageNo number) {
        const PageRef page = file_->read(number);
        for (uint16_t i = 0; i < data_page::slotCount(layout(), page.bytes()); ++i) {
            const Slot slot = data_page::slot(layout(), page.bytes(), i);
            if (slot.deleted || slot.hidden) continue;
            if (!slot.pointer) {
                view.attach(layout(), def, page.bytes().subspan(slot.start, slot.length), header_.codePage);
                visit(view);
                continue;
            }
            const RowId target = data_page::pointerTarget(layout(), page.bytes(), static_cast<uint8_t>(i));
            const PageRef other = file_->read(target.page);
            const Slot there = data_page::slot(layout(), other.bytes(), target.row);
            view.attach(layout(), def, other.bytes().subspan(there.start, there.length), header_.codePage);
            visit(view);
        }
    });
}

} // namespace format_test
