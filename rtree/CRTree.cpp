#include "rtree/CRTree.h"

void CRTree::removeAll() {}

void CRTree::reset() {}

bool CRTree::insertRect(RTreeRect*, void*, int)
{
    return false;
}

bool CRTree::removeRect(const RTreeRect*, void*)
{
    return false;
}

bool CRTree::removeId(void*)
{
    return false;
}

bool CRTree::removeFirstOverlapping(const RTreeRect*, EntryCallback, void*)
{
    return false;
}

bool CRTree::removeFirstContained(const RTreeRect*, EntryCallback, void*)
{
    return false;
}

void CRTree::bounds(RTreeRect*) {}

void CRTree::forEachEntry(EntryCallback, void*) {}

void CRTree::forEachEntryWithRect(EntryRectCallback, void*) {}

int CRTree::findContained(const RTreeRect*, tav::List<void*>*)
{
    return 0;
}

int CRTree::findOverlapping(const RTreeRect*, tav::List<void*>*)
{
    return 0;
}

int CRTree::searchOverlapping(const RTreeRect*, EntryCallback, void*)
{
    return 0;
}

int CRTree::searchOverlappingWithRect(const RTreeRect*, EntryRectCallback, void*)
{
    return 0;
}

int CRTree::searchContained(const RTreeRect*, EntryCallback, void*)
{
    return 0;
}

int CRTree::searchContainedWithRect(const RTreeRect*, EntryRectCallback, void*)
{
    return 0;
}

int CRTree::entryTotal()
{
    return 0;
}
