// The table of matches. DataTables sorts and pages it; without that library it is a plain table, filtered the same way.
"use strict";

// Head, words under the head, and how a cell is filled, of the columns that are known here. Others get their name, and
// what varnolix-job says about them. `shown` columns are there from the start.
const COLUMN_WORDS = {
  list: {head: "List", words: "ranked list", shown: true, fill: (row) => listName(matches.value("list", row))},
  query_rank_1based: {head: "Query rank", words: "in its list"},
  match_rank_1based: {head: "Rank", words: "1 is best", shown: true},
  query_id: {head: "Query", words: "motif, data set", shown: true, fill: (row) => nameCell(queryOf(row), row, "query")},
  target_id: {
    head: "Target",
    words: "motif, data set or collection",
    shown: true,
    fill: (row) => nameCell(targetOf(row), row, "target")
  },
  orientation: {
    head: "Strand",
    words: "same or opposite",
    shown: true,
    isShort: true,
    fill: (row) => (matches.value("orientation", row) === "+" ? "+ same" : "\u2212 opposite")
  },
  overlap: {head: "Overlap", words: "columns", shown: true},
  similarity: {head: "Similarity", words: "0 to 1, higher is better", shown: true},
  combined_score: {head: "Combined score", words: "lower is better", shown: true},
  p_value: {head: "p", words: "by chance; lower is better", shown: true},
  p_alignment: {head: "p of alignment", words: "lower is better"},
  e_value: {head: "E", words: "expected; lower is better", shown: true},
  q_value: {head: "q", words: "false share; lower is better", shown: true},
  target_offset_0based: {head: "Offset", words: "of the target, from 0"},
  query_consensus: {head: "Query consensus", words: "as aligned", isMono: true},
  target_consensus: {head: "Target consensus", words: "as aligned", isMono: true},
  in_report: {head: "In reports", words: "yes or no"},
};

function nameCell(motif, row, role) {
  const second = motif.second && motif.second !== motif.name ? ` ${motif.second}` : "";
  const dataset = matches.value(`${role}_dataset`, row);
  return [motifLink(motif), second && el("span", {class: "second"}, second),
    el("small", {class: "dataset"}, datasetMark(motif.isReference ? "" : dataset), ` ${dataset}`)];
}

function firstClause(text) {
  return text.split(/[;,:(]/)[0].slice(0, 60);
}

const matchColumns = matches.columns.map((column) => {
  const words = COLUMN_WORDS[column.name] || {};
  const isNumber = !column.texts;
  return {
    name: column.name,
    isNumber,
    head: words.head || column.name.replace(/_/g, " ").replace(/ ([01])based$/, ""),
    words: words.words || firstClause(column.meaning),
    meaning: column.meaning,
    shown: Boolean(words.shown),
    className: [isNumber ? "number" : "", words.isMono ? "mono" : "", words.isShort ? "short" : ""].join(" ").trim(),
    fill: words.fill || ((row) => {
      const value = matches.value(column.name, row);
      return isNumber ? shortNumber(value) : value || "";
    }),
  };
});

const filters = {words: [], list: "", dataset: "", similarity: null, q: null};

const SEARCHED = ["query_id", "query_name", "query_report_name", "target_id", "target_name", "target_report_name"];
const searchTexts = [];

// The names of a match, in small letters.
function searchTextOf(row) {
  searchTexts[row] ??= SEARCHED.map((name) => matches.value(name, row) || "").join("\n").toLowerCase();
  return searchTexts[row];
}

function passesFilters(row) {
  if (filters.list && matches.value("list", row) !== filters.list) return false;
  if (filters.dataset && matches.value("query_dataset", row) !== filters.dataset &&
      matches.value("target_dataset", row) !== filters.dataset) return false;
  if (filters.similarity !== null && matches.value("similarity", row) < filters.similarity) return false;
  if (filters.q !== null) {
    const q = matches.value("q_value", row);
    if (q === null || q > filters.q) return false;
  }
  return filters.words.every((word) => searchTextOf(row).includes(word));
}

function rowButton(row) {
  return el("button", {type: "button", class: "opener", "aria-expanded": "false",
    "aria-label": `Alignment of ${queryOf(row).name} and ${targetOf(row).name}`});
}

// Fills a cell of the table; the first one opens the row.
function fillCell(cell, row, place) {
  replaceChildren(cell, place === 0 ? rowButton(row) : [matchColumns[place - 1].fill(row)].flat());
}

function headCells() {
  return [el("th", {scope: "col", class: "opener-head"}, el("span", {class: "offscreen"}, "Alignment")),
    ...matchColumns.map((column) => el("th", {scope: "col", class: column.className, title: column.meaning},
      el("span", {class: "head"}, column.head), " ", el("small", {}, column.words)))];
}

// Numbers for DataTables: what has no value comes last, whatever the direction.
function compareNumbers(one, other, sign) {
  if (one === other) return 0;
  if (one === Infinity || other === Infinity) return one === Infinity ? 1 : -1;
  return sign * (one - other);
}

// The table by DataTables.
class SortedTable {
  constructor(area) {
    this.table =
        el("table", {id: "match-table", class: "matches"},
           el("caption", {class: "offscreen"},
              "Matches. The heads of the columns sort it; the first cell of a row opens the alignment."),
           el("thead", {}, el("tr", {}, headCells())));
    area.append(this.table);
    jQuery.fn.dataTable.ext.errMode = "throw";
    jQuery.fn.dataTable.ext.type.order["measured-asc"] = (one, other) => compareNumbers(one, other, 1);
    jQuery.fn.dataTable.ext.type.order["measured-desc"] = (one, other) => compareNumbers(one, other, -1);
    jQuery.fn.dataTable.ext.search.push((settings, texts, row) => passesFilters(row));
    const sortValue = (column) => (row, kind) => {
      if (kind !== "sort" && kind !== "type") return "";
      const value = matches.value(column.name, row[0]);
      if (column.name === "list") return String(placeOfList(value));
      // DataTables takes a lone "-" for nothing, hence the letter in front.
      return column.isNumber ? value ?? Infinity : `t${(value || "").toLowerCase()}`;
    };
    this.engine = jQuery(this.table).DataTable({
      data: Array.from({length: matches.rows}, (_, row) => [row]),
      columns: [
        {data: () => "", orderable: false, searchable: false, className: "opener-cell"},
        ...matchColumns.map((column) => ({
                              data: sortValue(column),
                              type: column.isNumber ? "measured" : "string",
                              searchable: false,
                              visible: column.shown,
                              className: column.className,
                            })),
      ],
      columnDefs: [{targets: "_all", createdCell: (cell, value, row, _, place) => fillCell(cell, row[0], place)}],
      createdRow: (line, row) => line.setAttribute("data-row", row[0]),
      order: [],
      orderClasses: false,
      deferRender: true,
      autoWidth: false,
      stripeClasses: [],
      pageLength: 50,
      lengthMenu: [25, 50, 100, 500, 1000],
      dom: "t<'table-foot'lip>",
      language: {
        info: "Matches _START_ to _END_ of _TOTAL_",
        infoEmpty: "No matches",
        infoFiltered: "",
        lengthMenu: "Rows on a page: _MENU_",
        zeroRecords: "No match passes the filters.",
        emptyTable: "The job found no matches.",
        paginate: {previous: "Previous", next: "Next"},
        aria: {sortAscending: ": sort, smallest first", sortDescending: ": sort, largest first"},
      },
    });
  }

  refilter() {
    this.engine.draw();
  }

  // The matches that pass the filters, as sorted.
  rows() {
    return this.engine.rows({search: "applied", order: "applied"}).indexes().toArray();
  }

  unsort() {
    this.engine.order([]).draw();
  }

  show(place, isShown) {
    this.engine.column(place + 1).visible(isShown);
  }

  // Turns to the page of a match; answers its line.
  lineOf(row) {
    const place = this.rows().indexOf(row);
    const length = this.engine.page.len();
    this.engine.page(length > 0 ? Math.floor(place / length) : 0).draw("page");
    return this.engine.row(row).node();
  }

  open(line, panel) {
    this.engine.row(line).child(panel, "opened").show();
  }

  close(line) {
    this.engine.row(line).child.remove();
  }

  showAll(most) {
    const length = this.engine.page.len();
    this.engine.page.len(Math.min(most, Math.max(1, this.rows().length))).draw();
    return () => this.engine.page.len(length).draw();
  }
}

// A table without a library: the matches in their order, more on demand.
class PlainTable {
  constructor(area) {
    this.most = 500;
    this.shown = matchColumns.map((column) => column.shown);
    this.body = el("tbody");
    this.headRow = el("tr", {}, headCells());
    this.more = el("button", {type: "button", click: () => { this.most *= 4; this.refilter(); }}, "Show more matches");
    area.append(el("table", {id: "match-table", class: "matches"}, el("caption", {class: "offscreen"}, "Matches"),
      el("thead", {}, this.headRow), this.body), this.more);
    this.refilter();
  }

  refilter() {
    const rows = this.rows();
    replaceChildren(this.body, rows.slice(0, this.most).map((row) => {
      const line = el("tr", {"data-row": row});
      for (let place = 0; place <= matchColumns.length; ++place) {
        const cell = el("td", {class: place === 0 ? "opener-cell" : matchColumns[place - 1].className});
        fillCell(cell, row, place);
        line.append(cell);
      }
      return line;
    }));
    this.more.hidden = rows.length <= this.most;
    this.hideColumns();
  }

  hideColumns() {
    for (const line of [this.headRow, ...this.body.rows]) {
      if (line.hasAttribute("data-row") || line === this.headRow) {
        this.shown.forEach((isShown, place) => { line.cells[place + 1].hidden = !isShown; });
      }
    }
  }

  rows() {
    return Array.from({length: matches.rows}, (_, row) => row).filter(passesFilters);
  }

  unsort() {
    this.refilter();
  }

  show(place, isShown) {
    this.shown[place] = isShown;
    this.hideColumns();
  }

  lineOf(row) {
    this.most = Math.max(this.most, this.rows().indexOf(row) + 1);
    this.refilter();
    return this.body.querySelector(`tr[data-row="${row}"]`);
  }

  open(line, panel) {
    line.after(el("tr", {class: "opened"}, el("td", {colspan: matchColumns.length + 1}, panel)));
  }

  close(line) {
    if (line.nextElementSibling && line.nextElementSibling.classList.contains("opened"))
      line.nextElementSibling.remove();
  }

  showAll(most) {
    const before = this.most;
    this.most = most;
    this.refilter();
    return () => { this.most = before; this.refilter(); };
  }
}

let matchView = null;

function toggleMatch(line, opens) {
  const button = line.querySelector(".opener");
  const isOpen = button.getAttribute("aria-expanded") === "true";
  if (opens === isOpen) return;
  button.setAttribute("aria-expanded", String(!isOpen));
  if (isOpen) matchView.close(line);
  else matchView.open(line, alignmentPanel(Number(line.dataset.row)));
}

// A click anywhere on a row opens it, unless it was meant for a link or for marking a text.
function onTableClick(event) {
  const line = event.target.closest("tr[data-row]");
  if (!line || event.target.closest("a") || (window.getSelection() && String(window.getSelection()) !== "")) return;
  toggleMatch(line);
}

function numberOf(input) {
  return input.value === "" || isNaN(input.value) ? null : Number(input.value);
}

function readFilters() {
  filters.words = byId("filter-name").value.toLowerCase().split(/\s+/).filter(Boolean);
  filters.list = byId("filter-list").value;
  filters.dataset = byId("filter-dataset").value;
  filters.similarity = numberOf(byId("filter-similarity"));
  filters.q = numberOf(byId("filter-q"));
}

function applyFilters() {
  readFilters();
  matchView.refilter();
  sayMatchCount();
}

function sayMatchCount() {
  const count = matchView.rows().length;
  byId("match-count").textContent = count === matches.rows ? counted(count, "match", "matches")
    : `${count.toLocaleString("en")} of ${counted(matches.rows, "match", "matches")}`;
}

function resetFilters() {
  byId("match-filters").reset();
  readFilters();
  matchView.unsort();
  sayMatchCount();
}

// The table as TSV: what passes the filters, in the order of the screen, with all columns.
function filteredTsv() {
  return [matches.tsvHeader(), ...matchView.rows().map((row) => matches.tsvRow(row))].join("\n") + "\n";
}

function fillSelect(select, all, names, nameOf = (name) => name) {
  append(select, [el("option", {value: ""}, all), names.map((name) => el("option", {value: name}, nameOf(name)))]);
}

function drawColumnChoices() {
  append(
      byId("column-choices"),
      matchColumns.map(
          (column, place) =>
              el("label", {}, el("input", {
                   type: "checkbox",
                   checked: column.shown,
                   change: (event) => matchView.show(place, event.target.checked)
                 }),
                 ` ${column.head}`)));
  append(byId("column-words"), [termList(matchColumns.map((column) => {
    const stored = matches.byName.get(column.name);
    return [[el("code", {}, column.name)], `${stored.meaning}. Values: ${stored.range}.`];
  }), "words")]);
}

// Opens the match of a link.
function showMatch(key) {
  let row = 0;
  while (row < matches.rows && matchKey(row) !== key) ++row;
  if (row === matches.rows) {
    say("This page has no such match.");
    return;
  }
  if (!passesFilters(row)) resetFilters();
  const line = matchView.lineOf(row);
  toggleMatch(line, true);
  line.scrollIntoView({block: "center"});
  line.querySelector(".opener").focus({preventScroll: true});
}

// The table by the library; without it, or if its version is too strange, a plain one.
function newTable(area) {
  if (window.jQuery && jQuery.fn.DataTable) {
    try {
      return new SortedTable(area);
    } catch (error) {
      console.warn("DataTables cannot draw the table:", error);
      area.textContent = "";
    }
  }
  return new PlainTable(area);
}

function drawMatches() {
  fillSelect(byId("filter-list"), "all lists", matches.texts("list"), listName);
  fillSelect(
      byId("filter-dataset"), "all",
      [...new Set([...matches.texts("query_dataset"), ...matches.texts("target_dataset")])]);
  byId("filter-q-label").hidden = !matches.has("q_value");
  const area = byId("match-area");
  matchView = newTable(area);
  drawColumnChoices();
  sayMatchCount();
  byId("match-table").addEventListener("click", onTableClick);
  const form = byId("match-filters");
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("input", later(applyFilters, 120));
  byId("filter-reset").addEventListener("click", resetFilters);
  byId("copy-matches").addEventListener("click", () =>
    copyText(filteredTsv(), counted(matchView.rows().length, "match was", "matches were")));
  byId("download-matches").addEventListener("click", () =>
    downloadText("matches.tsv", filteredTsv(), "text/tab-separated-values"));
}
