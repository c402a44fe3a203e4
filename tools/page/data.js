// The data of the job, as varnolix-job put it into the page.
"use strict";

const job = JSON.parse(byId("data").textContent);

// A table that is stored column by column. A column of texts keeps each text once.
class Table {
  constructor(stored) {
    this.rows = stored.rows;
    this.columns = stored.columns;
    this.byName = new Map(stored.columns.map((column) => [column.name, column]));
  }

  has(name) {
    return this.byName.has(name);
  }

  isText(name) {
    return Boolean(this.byName.get(name).texts);
  }

  // A text or a number; null if there is no value or no such column.
  value(name, row) {
    const column = this.byName.get(name);
    if (!column) return null;
    const cell = column.cells[row];
    return column.texts && cell !== null ? column.texts[cell] : cell;
  }

  // The texts of a column in order of appearance.
  texts(name) {
    const column = this.byName.get(name);
    return column && column.texts ? column.texts : [];
  }

  tsvHeader() {
    return this.columns.map((column) => column.name).join("\t");
  }

  tsvRow(row) {
    return this.columns.map((column) => tsvCell(this.value(column.name, row))).join("\t");
  }
}

const matches = new Table(job.matches.table);
const motifTable = new Table(job.motifs);
const skipped = new Table(job.skipped);

// The flat list of numbers as positions of four. A position without counts has zeros: it is drawn empty.
function positionsOf(flat) {
  const positions = [];
  for (let place = 0; place < flat.length; place += 4) positions.push(flat.slice(place, place + 4).map((x) => x || 0));
  return positions;
}

const SAME = [0, 1, 2, 3];
const BOTH_PAIRS = [3, 2, 1, 0];
const ONLY_AT = [3, 1, 2, 0];
const ONLY_CG = [0, 2, 1, 3];

class Motif {
  constructor(fields) {
    Object.assign(this, fields);
    this.positions = positionsOf(fields.matrix);
  }

  get hash() {
    return `#${this.isReference ? "reference" : "motif"}=${this.number}`;
  }

  // What the program compared as the reverse complement: in each position only the pair with the strongest base has
  // changed places.
  comparedReverse() {
    return this.turned((place) => (this.swaps[place] === "w" ? ONLY_AT : ONLY_CG));
  }

  trueReverse() {
    return this.turned(() => BOTH_PAIRS);
  }

  turned(orderAt) {
    return this.positions.map((values, place) => orderAt(place).map((base) => values[base])).reverse();
  }

  // The matrix on a strand of a match: "forward" or "reverse complement".
  strand(name, isTrue = false) {
    if (name === "forward") return this.positions;
    return isTrue ? this.trueReverse() : this.comparedReverse();
  }
}

const inputMotifs = job.matrices.map((stored, row) => new Motif({
  ...stored,
  isReference: false,
  number: motifTable.value("motif_number_1based", row),
  name: motifTable.value("id", row),
  second: motifTable.value("name", row) || "",
  dataset: motifTable.value("dataset", row),
  file: motifTable.value("file", row),
  line: motifTable.value("line_1based", row),
  bits: motifTable.value("information_bits", row),
  consensus: motifTable.value("consensus", row),
  reverseConsensus: motifTable.value("reverse_consensus", row),
  note: motifTable.value("note", row) || "",
}));
const motifByNumber = new Map(inputMotifs.map((motif) => [motif.number, motif]));
const referenceByNumber = new Map(job.matches.references.map((stored) => [stored.number, new Motif({
  ...stored, isReference: true, dataset: job.record.collection, note: "",
})]));

const datasetNames = job.record.datasets.map((dataset) => dataset.dataset);

function isAgainstReference(row) {
  return job.matches.against_reference[row] === "1";
}

function queryOf(row) {
  return motifByNumber.get(matches.value("query_number_1based", row));
}

function targetOf(row) {
  const motifs = isAgainstReference(row) ? referenceByNumber : motifByNumber;
  return motifs.get(matches.value("target_number_1based", row));
}

// The lists whose matches were found with the true reverse complement.
function usesTrueReverse(row) {
  return /significance/.test(matches.value("list", row));
}

// The name of a match in links.
function matchKey(row) {
  return ["list", "query_rank_1based", "match_rank_1based"].map((name) => matches.value(name, row)).join(".");
}

// The matches of each motif: those in which it is the query, the best list first.
const LIST_ORDER = [
  "by_significance", "each_motif", "collection_by_significance", "collection", "significant", "top_global",
  "collection_global"
];

function placeOfList(list) {
  const place = LIST_ORDER.indexOf(list);
  return place < 0 ? LIST_ORDER.length : place;
}

const matchRowsOf = (() => {
  const ofQuery = new Map();
  const ofTarget = new Map();
  const addTo = (map, key, row) => {
    if (!map.has(key)) map.set(key, []);
    map.get(key).push(row);
  };
  for (let row = 0; row < matches.rows; ++row) {
    addTo(ofQuery, matches.value("query_number_1based", row), row);
    if (isAgainstReference(row)) addTo(ofTarget, matches.value("target_number_1based", row), row);
  }
  return (motif) => (motif.isReference ? ofTarget : ofQuery).get(motif.number) || [];
})();
