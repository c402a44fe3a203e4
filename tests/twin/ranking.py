"""Grouping, sorting and reduction of the records, and the ranking of the motifs."""
from scanning import input_id


def sorted_groups(run, records, motif_of):
    """One list for each input motif, in the order of its id, each sorted by the key; equal keys keep their places."""
    groups = [[] for _ in run.motifs]
    for record in records:
        groups[motif_of(record) - 1].append(record)
    return [sorted(group, key=lambda r: r.score) for group in groups]


def reduce_inputs(groups, limit):
    """The best record of each partner; the walk's first list counts from 0 and so keeps one more."""
    reduced = []
    for place, group in enumerate(groups):
        kept, count = group[:1], 0 if place == 0 else 1
        seen = {record.id2 for record in kept}
        for record in group[1:]:
            if count >= limit:
                break
            if record.id2 not in seen:
                kept.append(record)
                seen.add(record.id2)
                count += 1
        reduced.append(kept)
    return reduced


def reduce_references(groups, limit):
    """The best record of each partner's name; the limit is tested only behind the second record."""
    reduced = []
    for group in groups:
        kept, seen = group[:1], {partner_name(record) for record in group[:1]}
        count = 1
        for record in group[1:]:
            if partner_name(record) not in seen:
                kept.append(record)
                seen.add(partner_name(record))
                count += 1
            if count >= limit:
                break
        reduced.append(kept)
    return reduced


def partner_name(record):
    return record.name2 if record.primary else record.name1


def ranked_ids(reduced):
    """Motif ids from the lowest sum of keys upwards; empty lists take part with a sum of 0.

    Equal sums keep the order of the motifs.
    """
    sums = []
    for place, group in enumerate(reduced):
        total = 0.0
        for record in group:
            total += record.score
        sums.append((total, place + 1))
    return [number for _, number in sorted(sums, key=lambda entry: entry[0])]


class Rankings:
    """The two rankings of a run: across files (global) and over all records (local)."""

    def __init__(self, run, records):
        across = [record for record in records if record.dataset1 != record.dataset2]
        self.several_files = run.file_count > 1
        self.local_groups = sorted_groups(run, records, lambda r: r.id1)
        self.global_groups = sorted_groups(run, across, lambda r: r.id1) if self.several_files else []
        self.local = reduce_inputs(self.local_groups, run.best_count)
        self.across = reduce_inputs(self.global_groups, run.best_count)
        self.local_order = [n for n in ranked_ids(self.local) if self.local[n - 1]][:run.top_count]
        self.global_order = [n for n in ranked_ids(self.across) if self.across[n - 1]][:run.top_count]
        self.largest_key = max([group[-1].score for group in self.local_groups if group], default=0.0)


def rank_references(run, records):
    """The reduced list of each input motif against the collection."""
    return reduce_references(sorted_groups(run, records, input_id), run.best_count)
