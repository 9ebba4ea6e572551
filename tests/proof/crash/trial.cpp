#include "trial.h"

#include "dump.h"

namespace proof {

using jet::MemoryIo;

Trial::Trial(const Statement& statement, std::shared_ptr<MemoryIo> disk, const Effort& effort, Judge& judge)
    : statement_(statement), disk_(std::move(disk)), effort_(effort), judge_(judge) {}

std::shared_ptr<MemoryIo> Trial::run() {
    learn();
    crashes();
    if (statement_.kind == Statement::Kind::Changes) othersGoOn();
    errors();
    if (!statement_.compacts()) recoveries();
    return after_;
}

void Trial::start(Workplace& place) const {
    if (statement_.kind != Statement::Kind::Changes) return;
    place.open();
    if (statement_.commitsBefore) place.execute("UPDATE Once SET Deger = Deger + 1");
}

void Trial::learn() {
    States states;
    after_ = freshDisk();
    {
        Workplace place(after_, statement_.cachePages);
        start(place);
        if (!statement_.makesFile()) { // by another handle: this one's cache is to be as in every other run
            Workplace other(after_);
            other.open();
            states.before = dumpOf(other.database());
            states.fileBefore = after_->contents(kDatabase);
        }
        Course course = courseOf(*after_, [&] { statement_.run(place); });
        operations_ = std::move(course.changes);
        reads_ = course.reads;
        if (!place.isOpen()) place.open();
        states.after = dumpOf(place.database());
        states.compacted = contentOf(place.database());
    }
    judge_.begin(statement_, std::move(states), disk_->contents(kSource));
    judge_.figures().operations = operations_.size();
    if (judge_.states().before == judge_.states().after) judge_.fault("without failure", "changes nothing");
    judge_.requireNoLeftovers(*after_, "without failure");
    after_->syncFolder(kDatabase.parent_path());
    after_ = after_->afterCrash(MemoryIo::Survives::Synced);
}

std::string Trial::at(size_t n, const char* what) const {
    const std::string text = n < operations_.size() ? operations_[n].text : "end";
    return "operation " + std::to_string(n) + " of " + std::to_string(operations_.size()) + " (" + text +
           "), " + what;
}

} // namespace proof
