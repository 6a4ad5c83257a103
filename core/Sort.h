// The one quicksort of the program, over anything that can tell its size, compare two of its
// items by position and swap them: script arrays, the XSLT sorter and the key index use it.
#pragma once

namespace Core {

class ISortable {
public:
    virtual ~ISortable() = default;
    virtual int GetSize() = 0;
    // Negative, zero or positive as item i sorts before, with or after item j.
    virtual int Compare(int i, int j) = 0;
    virtual void Swap(int i, int j) = 0;
};

// Not stable. Ranges of more than 8 items are partitioned around their middle item, the smaller
// side first with the larger kept on an explicit stack; short ranges finish by insertion sort.
void Sort(ISortable& sortable);

}  // namespace Core
