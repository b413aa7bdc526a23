// A plugin of one class. It asks the host for IcommonFunc and links nothing of it.
#include <calcora/IcommonFunc.h>
#include <tavrel/core.h>

#include <cmath>

#include "IFence.h"

namespace {

class Fence : public tav::PlainObject<Fence, IFence> {
public:
    static constexpr const char* kClassName = "Fence";

    double placePosts(const Points& boundary, const Values& bulges, double spacing,
                      Points& posts) override
    {
        const auto common = tav::Ref<IcommonFunc>::create();  // whichever plugin offers it
        if (!common || boundary.isEmpty() || !(spacing > 0)) return 0;
        Points ring = boundary;  // that comes back to its first vertex
        ring.append(boundary[0]);
        const double length = common->bulgePolylineLength(boundary, bulges, true);
        const int count = static_cast<int>(std::ceil(length / spacing));
        posts.clear();
        for (int i = 0; i < count; ++i) {
            tav::Point2DF post;
            common->pointAtStation(ring, bulges, i * length / count, post);
            posts.append(post);
        }
        return length;
    }
};

}  // namespace

extern "C" {

TAV_EXPORT bool TavInitPlugin()
{
    return true;
}
TAV_EXPORT bool TavFreePlugin()
{
    return true;
}
TAV_EXPORT const char* tavrelVersion()
{
    return "1.0.0";
}

TAV_EXPORT tav::List<tav::ClassEntry*>* initClasses()
{
    static tav::List<tav::ClassEntry*> entries;
    entries = {new tav::CppClassEntry(0, "fence.fence", "clsid_fence_fence", tav::kLangCpp,
                                      {IFence::staticInterfaceId()}, tav::createInstance<Fence>,
                                      tav::supportsInterface<Fence>)};  // the host deletes it
    return &entries;
}
}
