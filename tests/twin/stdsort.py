"""std::sort of libstdc++, step by step, so that equal keys fall where that library lets them fall.

The list holds (key, payload) pairs; only the keys are compared, and only by "less than".
"""
THRESHOLD = 16


def std_sort(items, key):
    """A new list in the order that std::sort leaves when it compares key(item) by "less than"."""
    pairs = [(key(item), item) for item in items]
    if pairs:
        depth = 2 * (len(pairs).bit_length() - 1)
        _introsort(pairs, 0, len(pairs), depth)
        _final_insertion_sort(pairs)
    return [item for _, item in pairs]


def _less(a, b):
    return a[0] < b[0]


def _introsort(a, first, last, depth):
    while last - first > THRESHOLD:
        if depth == 0:
            _heap_sort(a, first, last)
            return
        depth -= 1
        cut = _partition_by_pivot(a, first, last)
        _introsort(a, cut, last, depth)
        last = cut


def _partition_by_pivot(a, first, last):
    middle = first + (last - first) // 2
    _median_to_first(a, first, first + 1, middle, last - 1)
    return _unguarded_partition(a, first + 1, last, a[first])


def _median_to_first(a, result, x, y, z):
    if _less(a[x], a[y]):
        chosen = y if _less(a[y], a[z]) else z if _less(a[x], a[z]) else x
    else:
        chosen = x if _less(a[x], a[z]) else z if _less(a[y], a[z]) else y
    a[result], a[chosen] = a[chosen], a[result]


def _unguarded_partition(a, first, last, pivot):
    while True:
        while _less(a[first], pivot):
            first += 1
        last -= 1
        while _less(pivot, a[last]):
            last -= 1
        if not first < last:
            return first
        a[first], a[last] = a[last], a[first]
        first += 1


def _final_insertion_sort(a):
    _insertion_sort(a, min(len(a), THRESHOLD))
    for i in range(THRESHOLD, len(a)):
        _linear_insert(a, i)


def _insertion_sort(a, last):
    for i in range(1, last):
        if _less(a[i], a[0]):
            a.insert(0, a.pop(i))
        else:
            _linear_insert(a, i)


def _linear_insert(a, i):
    value = a[i]
    while _less(value, a[i - 1]):
        a[i] = a[i - 1]
        i -= 1
    a[i] = value


def _heap_sort(a, first, last):
    length = last - first
    for parent in range((length - 2) // 2, -1, -1):
        _adjust_heap(a, first, parent, length, a[first + parent])
    while last - first > 1:
        last -= 1
        value, a[last] = a[last], a[first]
        _adjust_heap(a, first, 0, last - first, value)


def _adjust_heap(a, first, hole, length, value):
    top, child = hole, hole
    while child < (length - 1) // 2:
        child = 2 * (child + 1)
        if _less(a[first + child], a[first + child - 1]):
            child -= 1
        a[first + hole] = a[first + child]
        hole = child
    if length % 2 == 0 and child == (length - 2) // 2:
        child = 2 * (child + 1)
        a[first + hole] = a[first + child - 1]
        hole = child - 1
    parent = (hole - 1) // 2
    while hole > top and _less(a[first + parent], value):
        a[first + hole] = a[first + parent]
        hole = parent
        parent = (hole - 1) // 2
    a[first + hole] = value
