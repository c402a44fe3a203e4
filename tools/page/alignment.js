// Two motifs of a match, one above the other, on the strands and in the columns in which they were compared.
"use strict";

const ALIGNED = {
  logoHeight: 64,
  stripHeight: 22,
  numbersHeight: 15,
  lineHeight: 19,
  widest: 34,
  narrowest: 14,
  roomy: 900
};

function strandWords(strand) {
  return strand === "forward" ? "forward" : "reverse complement";
}

// Where the motifs of a match lie: columns are counted from the query's first.
function placementOf(row) {
  const query = queryOf(row);
  const target = targetOf(row);
  const queryStrand = matches.value("query_orientation", row);
  const targetStrand = matches.value("target_orientation", row);
  const offset = matches.value("target_offset_0based", row);
  const isTrue = usesTrueReverse(row);
  const queryPositions = query.strand(queryStrand, isTrue);
  const targetPositions = target.strand(targetStrand, isTrue);
  return {
    query, target, queryStrand, targetStrand, offset, queryPositions, targetPositions,
    first: Math.min(0, offset),
    end: Math.max(queryPositions.length, offset + targetPositions.length),
    overlapFirst: Math.max(0, offset),
    overlapEnd: Math.min(queryPositions.length, offset + targetPositions.length),
  };
}

// Whether the same base is the strongest in both motifs; false outside of the overlap.
function agreesAt(placement, column) {
  if (column < placement.overlapFirst || column >= placement.overlapEnd) return false;
  return strongestBase(placement.queryPositions[column]) ===
      strongestBase(placement.targetPositions[column - placement.offset]);
}

function similarityAt(placement, column) {
  const one = placement.queryPositions[column];
  const other = placement.targetPositions[column - placement.offset];
  return one.reduce((sum, value, base) => sum + 1 - Math.abs(value - other[base]), 0) / BASES.length;
}

// The numbers of every fifth position and the first, from `first` on.
function positionNumbers(count, first, columnWidth, y) {
  const texts = [];
  for (let place = 0; place < count; ++place) {
    if (place > 0 && (place + 1) % 5 !== 0) continue;
    texts.push(svgEl(
        "text", {class: "logo-text", x: (first + place + 0.5) * columnWidth, y, "text-anchor": "middle"},
        String(place + 1)));
  }
  return texts;
}

function alignmentPicture(row) {
  const at = placementOf(row);
  const columns = at.end - at.first;
  const columnWidth = Math.max(ALIGNED.narrowest, Math.min(ALIGNED.widest, ALIGNED.roomy / columns));
  const {logoHeight, stripHeight, numbersHeight} = ALIGNED;
  const stripTop = numbersHeight + logoHeight;
  const targetTop = stripTop + stripHeight;
  const width = columns * columnWidth;
  const linesTop = targetTop + logoHeight + numbersHeight + 6;
  const height = linesTop + 3 * ALIGNED.lineHeight;
  const x = (column) => (column - at.first) * columnWidth;
  const targetLetters = logoLetters(at.targetPositions, columnWidth, logoHeight, at.offset - at.first);
  targetLetters.setAttribute("transform", `translate(0 ${targetTop})`);
  const queryLetters = logoLetters(at.queryPositions, columnWidth, logoHeight, -at.first);
  queryLetters.setAttribute("transform", `translate(0 ${numbersHeight})`);
  const strip = [];
  for (let column = at.overlapFirst; column < at.overlapEnd; ++column) {
    const center = x(column) + columnWidth / 2;
    const agrees = agreesAt(at, column);
    const half = ((stripHeight - 6) / 2) * Math.max(0.12, similarityAt(at, column));
    const middle = stripTop + stripHeight / 2;
    strip.push(svgEl(
        "rect", {
          class: agrees ? "agrees" : "differs",
          x: center - (agrees ? 2.5 : 0.75),
          y: middle - half,
          width: agrees ? 5 : 1.5,
          height: 2 * half,
        },
        svgEl("title", {}, `similarity of this column ${similarityAt(at, column).toFixed(3)}`)));
  }
  const label =
      `${at.query.name}, ${strandWords(at.queryStrand)}, above ${at.target.name}, ${strandWords(at.targetStrand)}; ` +
      `${at.overlapEnd - at.overlapFirst} columns overlap; consensus ${matches.value("query_consensus", row)} above ${
          matches.value("target_consensus", row)}`;
  return svgEl(
      "svg", {
        class: "logo alignment-logo",
        role: "img",
        "aria-label": label,
        viewBox: `0 0 ${width} ${height}`,
        width,
        height
      },
      svgEl("rect", {
        class: "overlap",
        x: x(at.overlapFirst),
        y: 0,
        width: (at.overlapEnd - at.overlapFirst) * columnWidth,
        height: linesTop - 6
      }),
      positionNumbers(at.queryPositions.length, -at.first, columnWidth, 11), queryLetters,
      svgEl("path", {class: "logo-line", d: `M ${x(0)} ${stripTop + 0.5} H ${x(at.queryPositions.length)}`}), strip,
      targetLetters, svgEl("path", {
        class: "logo-line",
        d: `M ${x(at.offset)} ${targetTop + logoHeight + 0.5} H ${x(at.offset + at.targetPositions.length)}`
      }),
      positionNumbers(at.targetPositions.length, at.offset - at.first, columnWidth, linesTop - 9),
      consensusLines(row, at).map(
          (line, place) => svgEl(
              "text", {
                class: "consensus-line",
                y: linesTop + (place + 0.75) * ALIGNED.lineHeight,
                "text-anchor": "middle",
                "xml:space": "preserve",
                x: [...line].map((_, column) => (column + 0.5) * columnWidth).join(" "),
              },
              line)));
}

// Consensus of both with a bar between columns that agree.
function consensusLines(row, at) {
  let bars = "";
  for (let column = at.first; column < at.end; ++column) bars += agreesAt(at, column) ? "|" : " ";
  return [matches.value("query_consensus", row), bars, matches.value("target_consensus", row)];
}

function alignmentSentence(row) {
  const at = placementOf(row);
  return el(
      "p", {class: "sentence"}, motifLink(at.query),
      ` (${matches.value("query_dataset", row)}), ${strandWords(at.queryStrand)}, above `, motifLink(at.target),
      ` (${matches.value("target_dataset", row)}), ${strandWords(at.targetStrand)}: `,
      `${counted(matches.value("overlap", row), "column")} overlap with a similarity of ${
          shortNumber(matches.value("similarity", row))}.`);
}

// What a row of the table opens.
function alignmentPanel(row) {
  return el(
      "div", {class: "alignment"}, alignmentSentence(row),
      el("div", {class: "alignment-side"},
         el("div", {class: "names", "aria-hidden": "true"},
            el("div", {}, el("strong", {}, queryOf(row).name),
               el("small", {}, strandWords(matches.value("query_orientation", row)))),
            el("div", {}, el("strong", {}, targetOf(row).name),
               el("small", {}, strandWords(matches.value("target_orientation", row))))),
         el("div", {class: "scroller", tabindex: "0", role: "region", "aria-label": "Alignment"},
            alignmentPicture(row))),
      el("p", {class: "muted small"},
         "Shaded: the columns that face each other. Bars: how similar two columns are, " +
              "thick where both have the same strongest base. Beneath: the consensus of both."),
      el("div", {class: "toolbar slim"},
         el("a", {href: `#match=${encodeURIComponent(matchKey(row))}`}, "Link to this match"),
         el("button", {
           type: "button",
           click: () => copyText(`${matches.tsvHeader()}\n${matches.tsvRow(row)}\n`, "The match was")
         },
            "Copy this match as TSV")),
      el("details", {}, el("summary", {}, "All values of this match"),
         termList(
             matches.columns.map((column) => [column.name, tsvCell(matches.value(column.name, row)) || "-"]),
             "pairs values")));
}
