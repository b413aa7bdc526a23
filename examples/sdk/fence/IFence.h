// An interface of one's own: a name, and operations in fixed order from slot 6 on.
#pragma once

#include <tavrel/IObject.h>
#include <tavrel/Vector.h>
#include <tavrel/points.h>

class IFence : public tav::InterfaceOf<IFence> {
public:
    static constexpr const char* kInterfaceName = "IFence";

    using Points = tav::Vector<tav::Point2DF>;
    using Values = tav::Vector<double>;

    /// Slot 6. Places posts along a closed boundary with arcs, evenly and at most `spacing` apart.
    /// Replaces `posts`; the result is the length of wire, 0 when the host offers no IcommonFunc.
    virtual double placePosts(const Points& boundary, const Values& bulges, double spacing,
                              Points& posts) = 0;
};
