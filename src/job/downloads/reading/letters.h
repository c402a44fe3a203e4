#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "job/downloads/download.h"
#include "job/downloads/reading/records.h"

// Sequences of nucleotide letters, and what they are in a file: sites of one motif, or one consensus each.

namespace varnolix::job {

/// The bases that an IUPAC letter allows, in any case, as counts of "0" and "1"; U is T. Nothing for other characters.
std::optional<NumberColumn> basesAllowedBy(char letter);

/// Whether the character fills a place in an alignment where a site has no base: "-" or ".".
bool isGap(char character);

/// Whether the line can be a sequence: one word of letters and gaps, at least two.
bool isSequence(std::string_view line);

/// Some collections publish sites with their surroundings, the site in upper case and the rest in lower case. If that
/// is so in all sequences, with sites of one length, the sites alone; otherwise the sequences as they are.
Lines withoutSurroundings(const Lines& sequences);

/// Whether records of sequences are aligned sites rather than one consensus each. They are if a record has several
/// lines, or if there are gaps. They are not if there is a letter for several bases other than N. Otherwise they are if
/// more than half of them, and at least two, are equally long, with or without their surroundings.
bool areSites(const std::vector<Record>& records);

}  // namespace varnolix::job
