// The centre of the circle through three points, told from the first of them.
#pragma once

#include "frame/detail/vec3.h"
#include "geo/IMatrix.h"

namespace calcora::paths {

/// In plan: the centre of the circle through the origin, u and v, by cross products, which stay
/// exact for level chords where the slopes of the bisectors do not.
constexpr Vec3 planCircumcentre(const Vec3& u, const Vec3& v)
{
    const double twiceArea2 = 2 * planCross(u, v);
    const double uu = dot(u, u);
    const double vv = dot(v, v);
    return {(v.y * uu - u.y * vv) / twiceArea2, (u.x * vv - v.x * uu) / twiceArea2, 0.0};
}

/// In space, three equations: the centre lies in the plane of the origin, u and v and on the planes
/// that halve the chords to u and to v. `centre` is their right-hand side, solved in place.
struct CentreEquations {
    geo::IMatrix& coefficients;
    geo::IMatrix& centre;

    void set(const Vec3& u, const Vec3& v) const
    {
        coefficients.initSquare(3, 0.0);
        setRow(0, cross(u, v));
        setRow(1, 2 * u);
        setRow(2, 2 * v);
        centre.resize(3, 1);
        centre.setValue(1, 0, dot(u, u));
        centre.setValue(2, 0, dot(v, v));
    }

    Vec3 solution() const { return {centre.value(0, 0), centre.value(1, 0), centre.value(2, 0)}; }

private:
    void setRow(int row, const Vec3& values) const
    {
        coefficients.setValue(row, 0, values.x);
        coefficients.setValue(row, 1, values.y);
        coefficients.setValue(row, 2, values.z);
    }
};

}  // namespace calcora::paths
