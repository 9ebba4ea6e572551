// jet/table/permissions.h: MSysACEs.
#include "jet/table/permissions.h"

#include "jet/table/catalog.h"
#include "jet/table/system_row.h"

namespace jet {

namespace {

// Rights that stand in a container for "whoever creates an object here"; files made elsewhere do not hand
// that row on.
constexpr int32_t kCreatorRights = 0xF00FE;

std::vector<Permission> handedOnBy(TableSource& source, int32_t container) {
    Table aces(source, SystemPage::kAces);
    const size_t object = systemColumn(aces, "ObjectId"), who = systemColumn(aces, "SID"),
                 rights = systemColumn(aces, "ACM"), handedOn = systemColumn(aces, "FInheritable");
    std::vector<Permission> found;
    Scan scan = aces.scan();
    while (scan.next()) {
        const RowView& row = scan.row();
        if (row.isNull(object) || row.integer(object) != container) continue;
        if (row.isNull(who) || row.isNull(rights) || !row.boolean(handedOn)) continue;
        if (row.integer(rights) == kCreatorRights) continue;
        const auto id = row.raw(who);
        found.push_back({container, Bytes(id.begin(), id.end()), row.integer(rights), true});
    }
    return found;
}

} // namespace

void addPermission(TableSource& source, const Permission& permission) {
    Table aces(source, SystemPage::kAces);
    SystemRow(aces)
        .set("ObjectId", permission.object)
        .set("SID", permission.who)
        .set("ACM", permission.rights)
        .set("FInheritable", permission.handedOn)
        .insert();
}

void inheritPermissions(TableSource& source, int32_t container, int32_t object) {
    for (const Permission& permission : handedOnBy(source, container))
        addPermission(source, {object, permission.who, permission.rights, false});
}

void removePermissions(TableSource& source, int32_t object) {
    Table aces(source, SystemPage::kAces);
    const size_t column = systemColumn(aces, "ObjectId");
    std::vector<RowId> rows;
    {
        Scan scan = aces.scan();
        while (scan.next())
            if (!scan.row().isNull(column) && scan.row().integer(column) == object) rows.push_back(scan.id());
    }
    for (const RowId row : rows)
        aces.remove(row);
}

} // namespace jet
