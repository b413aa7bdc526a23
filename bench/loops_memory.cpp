// Bytes that an extraction asks for at its peak, its result included, for each segment.
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "bench/workloads.h"
#include "datageo/DataGeo.h"

namespace {

std::size_t inUse = 0;
std::size_t peak = 0;

void* taken(void* memory)
{
    if (!memory) throw std::bad_alloc();
    inUse += malloc_usable_size(memory);
    peak = std::max(peak, inUse);
    return memory;
}

void givenBack(void* memory)
{
    if (memory) inUse -= malloc_usable_size(memory);
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t bytes)
{
    return taken(std::malloc(bytes));
}
void* operator new(std::size_t bytes, std::align_val_t alignment)
{
    const auto multiple = static_cast<std::size_t>(alignment);
    return taken(std::aligned_alloc(multiple, (bytes + multiple - 1) / multiple * multiple));
}
void operator delete(void* memory) noexcept
{
    givenBack(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    givenBack(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    givenBack(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    givenBack(memory);
}

int main()
{
    for (const workloads::Named& workload : workloads::all())
        for (const int size : {10000, 100000}) {
            const workloads::LineWork work = workload.make(size);
            IDataGeo::PointLists loops;
            IDataGeo::ValueLists bulges;
            const std::size_t before = peak = inUse;
            DataGeo(0).buildRegions(work.points, work.bulges, loops, bulges, false, nullptr,
                                    work.snapTolerance);
            std::printf("memory_%s %d %.0f\n", workload.name, size,
                        static_cast<double>(peak - before) / work.segments);
        }
    return 0;
}
