// Quicksort with an explicit stack and insertion sort for short ranges.
#include "core/Sort.h"

namespace Core {

namespace {

const int kShortRange = 8;

void InsertionSort(ISortable& sortable, int low, int high) {
    for (int i = low + 1; i <= high; ++i) {
        for (int j = i; j > low && sortable.Compare(j - 1, j) > 0; --j) sortable.Swap(j - 1, j);
    }
}

// Moves the middle item to the front, gathers the smaller items behind it and puts it
// between the two groups; returns its final position.
int Partition(ISortable& sortable, int low, int high) {
    sortable.Swap(low, low + (high - low) / 2);
    int last = low;
    for (int i = low + 1; i <= high; ++i) {
        if (sortable.Compare(i, low) < 0) sortable.Swap(++last, i);
    }
    sortable.Swap(low, last);
    return last;
}

}  // namespace

void Sort(ISortable& sortable) {
    struct SRange {
        int nLow, nHigh;
    };
    // The smaller side is always sorted first, so the stack holds at most log2(n) ranges.
    SRange stack[64];
    int depth = 0;
    int low = 0, high = sortable.GetSize() - 1;
    for (;;) {
        if (high - low + 1 > kShortRange) {
            int pivot = Partition(sortable, low, high);
            if (pivot - low < high - pivot) {
                stack[depth++] = SRange{pivot + 1, high};
                high = pivot - 1;
            } else {
                stack[depth++] = SRange{low, pivot - 1};
                low = pivot + 1;
            }
            continue;
        }
        if (high > low) InsertionSort(sortable, low, high);
        if (depth == 0) return;
        --depth;
        low = stack[depth].nLow;
        high = stack[depth].nHigh;
    }
}

}  // namespace Core
