// Sequences of operations on an R-tree, compared with a plain list of its entries.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "fuzz/source.h"
#include "rtree/CRTree.h"

namespace {

struct Entry {
    RTreeRect rect;
    std::intptr_t id;
};

void expect(bool holds, const char* what)
{
    if (holds) return;
    std::fprintf(stderr, "fuzz: R-tree: %s\n", what);
    std::abort();
}

bool overlaps(const RTreeRect& q, const RTreeRect& r)
{
    return !(q.minX > r.maxX || r.minX > q.maxX || q.minY > r.maxY || r.minY > q.maxY);
}
bool contains(const RTreeRect& q, const RTreeRect& r)
{
    return !(q.minX > r.minX || r.maxX > q.maxX || q.minY > r.minY || r.maxY > q.maxY);
}
bool isOrdered(const RTreeRect& r)
{
    return r.minX <= r.maxX && r.minY <= r.maxY;
}

class Sequence {
public:
    explicit Sequence(fuzz::Source& source) : source_(source) {}

    void run()
    {
        for (int n = source_.below(400); n > 0; --n) step();
        expect(tree_.entryTotal() == static_cast<int>(list_.size()), "wrong number of entries");
        while (!list_.empty()) {
            const Entry entry = list_.back();
            list_.pop_back();
            expect(tree_.removeId(idOf(entry)), "an entry got lost");
        }
        expect(tree_.entryTotal() == 0, "entries stay behind");
    }

private:
    static void* idOf(const Entry& entry) { return reinterpret_cast<void*>(entry.id); }

    RTreeRect anyRect()
    {
        const auto p = source_.point();
        const bool isOdd = !source_.isFinite() && source_.oneIn(4);
        const auto size = [&] { return isOdd ? source_.number() : std::fabs(source_.number()); };
        const double width = size();
        return {p.x(), p.y(), p.x() + width, p.y() + size()};
    }

    void step()
    {
        switch (source_.below(8)) {
            case 0:
            case 1:
            case 2:
            case 3:
                insert();
                break;
            case 4:
                removeKnown();
                break;
            case 5:
                removeByRect();
                break;
            default:
                search();
        }
    }

    void insert()
    {
        RTreeRect rect = anyRect();
        tree_.insertRect(&rect, reinterpret_cast<void*>(++lastId_), 0);
        list_.push_back({rect, lastId_});  // as the tree corrected it
    }

    void removeKnown()
    {
        if (list_.empty()) return;
        const auto at = list_.begin() +
                        source_.below(static_cast<int>(std::min<std::size_t>(list_.size(), 65536)));
        const bool byId = source_.oneIn(2);
        expect(byId || !isOrdered(at->rect) ? tree_.removeId(idOf(*at))
                                            : tree_.removeRect(&at->rect, idOf(*at)),
               "an entry was not found");
        list_.erase(at);
    }

    void removeByRect()
    {
        const RTreeRect rect = anyRect();
        removed_ = 0;
        const auto take = [](void* id, void* self) {
            static_cast<Sequence*>(self)->removed_ = reinterpret_cast<std::intptr_t>(id);
            return 1;
        };
        const bool inside = source_.oneIn(2);
        const bool none = inside ? tree_.removeFirstContained(&rect, take, this)
                                 : tree_.removeFirstOverlapping(&rect, take, this);
        expect(none == (removed_ == 0), "the result of a removal");
        if (none) {
            const auto fits = [&](const Entry& e) {
                return (inside ? contains : overlaps)(rect, e.rect);
            };
            expect(!source_.isFinite() || std::none_of(list_.begin(), list_.end(), fits),
                   "a removal missed its entry");
            return;
        }
        const auto at = std::find_if(list_.begin(), list_.end(),
                                     [&](const Entry& e) { return e.id == removed_; });
        expect(at != list_.end(), "removed what was not there");
        expect((inside ? contains : overlaps)(rect, at->rect), "removed a wrong entry");
        list_.erase(at);
    }

    void search()
    {
        const RTreeRect rect = anyRect();
        tav::List<void*> hits;
        const bool inside = source_.oneIn(2);
        const int n =
            inside ? tree_.findContained(&rect, &hits) : tree_.findOverlapping(&rect, &hits);
        expect(n == hits.size(), "the number of hits");
        std::vector<std::intptr_t> found, wanted;
        for (void* id : std::as_const(hits)) found.push_back(reinterpret_cast<std::intptr_t>(id));
        for (const Entry& e : list_)
            if ((inside ? contains : overlaps)(rect, e.rect)) wanted.push_back(e.id);
        std::sort(found.begin(), found.end());
        expect(std::adjacent_find(found.begin(), found.end()) == found.end(), "a hit told twice");
        expect(std::includes(wanted.begin(), wanted.end(), found.begin(), found.end()),
               "a hit that is none");
        // Entries whose minimum exceeds their maximum may be passed over.
        if (source_.isFinite()) expect(found == wanted, "a hit is missing");
    }

    fuzz::Source& source_;
    CRTree tree_;
    std::vector<Entry> list_;
    std::intptr_t lastId_ = 0;
    std::intptr_t removed_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Source source(data, size);
    Sequence(source).run();
    return 0;
}
