// Keeps the boxes of houses in an R-tree and asks it with callbacks.
#include <calcora/ICRTree.h>
#include <tavrel/PluginHost.h>
#include <tavrel/Ref.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

struct House {
    std::string name;
    RTreeRect box;
};

// The tree hands back the ids it was given, here pointers, and the context of the query.
int addName(void* id, void* context)
{
    *static_cast<std::string*>(context) += " " + static_cast<House*>(id)->name;
    return 1;  // 0 leaves out the rest of this leaf
}

int printWidth(void* id, RTreeRect* rect, void*)
{
    std::printf("  %s is %g wide\n", static_cast<House*>(id)->name.c_str(),
                rect->maxX - rect->minX);
    return 1;
}

}  // namespace

int main()
{
    const auto plugin = tav::Plugin::load("libquon_calcora.so");
    const auto tree = tav::Ref<ICRTree>::create();

    std::vector<House> houses;
    for (int i = 0; i < 100; ++i) {
        const double x = 20.0 * (i % 10), y = 20.0 * (i / 10);
        houses.push_back({"house " + std::to_string(i), {x, y, x + 8 + i % 4, y + 10}});
    }
    for (House& house : houses) tree->insertRect(&house.box, &house, 0);

    const RTreeRect window{25, 25, 52, 52};
    std::string names;
    const int touched = tree->searchOverlapping(&window, addName, &names);
    std::printf("touched:%s, %d of %d\ninside:\n", names.c_str(), touched, tree->entryTotal());
    tree->searchContainedWithRect(&window, printWidth, nullptr);

    tree->removeId(&houses[22]);
    std::printf("%d left\n", tree->entryTotal());
}

// Prints:
//   touched: house 11 house 12 house 21 house 22, 4 of 100
//   inside:
//     house 22 is 10 wide
//   99 left
