// Growing arrays for result points and the parameters that go with them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "tavrel/points.h"

namespace calcora::detail {

/// A pair of work arrays. Its memory is left uninitialised, so that room for the worst case of a
/// walk costs nothing until it is used.
class WorkPair {
public:
    WorkPair() = default;
    explicit WorkPair(std::size_t capacity) { grow(capacity, 0); }

    /// Makes room for `wanted` entries; the first `kept` keep their values.
    void grow(std::size_t wanted, std::size_t kept)
    {
        if (wanted <= capacity_) return;
        const std::size_t capacity = std::max(wanted, 2 * capacity_);
        auto points = allocate<tav::Point2DF>(capacity);
        auto params = allocate<double>(capacity);
        std::uninitialized_copy_n(points_.get(), kept, points.get());
        std::uninitialized_copy_n(params_.get(), kept, params.get());
        points_ = std::move(points);
        params_ = std::move(params);
        capacity_ = capacity;
    }

    tav::Point2DF* points() { return points_.get(); }
    double* params() { return params_.get(); }

    WorkPair(WorkPair&& other) noexcept { *this = std::move(other); }
    WorkPair& operator=(WorkPair&& other) noexcept
    {
        points_ = std::move(other.points_);
        params_ = std::move(other.params_);
        capacity_ = std::exchange(other.capacity_, 0);
        return *this;
    }

private:
    struct Free {
        void operator()(void* memory) const { ::operator delete(memory); }
    };
    template <class T>
    using Array = std::unique_ptr<T, Free>;

    template <class T>
    static Array<T> allocate(std::size_t count)
    {
        return Array<T>(static_cast<T*>(::operator new(count * sizeof(T))));
    }

    Array<tav::Point2DF> points_;
    Array<double> params_;
    std::size_t capacity_ = 0;
};

/// Takes a work pair out of its home for the time of one call, so that a call nested in it finds
/// the home empty and works in arrays of its own.
class WorkLease {
public:
    explicit WorkLease(WorkPair& home) : home_(home), pair(std::move(home)) {}
    WorkLease(const WorkLease&) = delete;
    WorkLease& operator=(const WorkLease&) = delete;
    ~WorkLease() { home_ = std::move(pair); }

private:
    WorkPair& home_;

public:
    WorkPair pair;
};

}  // namespace calcora::detail
