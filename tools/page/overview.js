// The head of the page: what was compared, how, and what there is to read beside it.
"use strict";

const LIST_NAMES = {
  top_global: "Top across data sets",
  significant: "Top of all matching",
  each_motif: "Each motif",
  collection: "Collection",
  collection_global: "Collection, top across",
  by_significance: "By significance",
  collection_by_significance: "Collection, by significance",
};

function listName(list) {
  return LIST_NAMES[list] || list.replace(/_/g, " ");
}

// "2026-11-21T19:38:50Z" for reading.
function dateText(text) {
  return text.replace("T", " ").replace(/:\d\dZ$/, " UTC");
}

function secondsText(seconds) {
  if (seconds < 60) return `${seconds.toFixed(1)} s`;
  return `${Math.floor(seconds / 60)} min ${Math.round(seconds % 60)} s`;
}

function drawJobLine() {
  const {program, version, date, stages} = job.record;
  const runTime = stages.reduce((sum, stage) => sum + stage.seconds, 0);
  byId("job-line").textContent = `${dateText(date)} · ${program} ${version} · run time ${secondsText(runTime)}`;
}

function drawFigures() {
  const {counts, datasets} = job.record;
  const figures = [
    [counts.motifs, counts.motifs === 1 ? "motif" : "motifs"],
    [datasets.length, datasets.length === 1 ? "data set" : "data sets"],
    [job.matches.total, "matches in all lists"],
  ];
  if (counts.collection_motifs > 0) figures.push([counts.collection_motifs, "reference motifs"]);
  if (families.length > 0) {
    const singles = families.filter(isSingle).length;
    const joined = families.length - singles;
    figures.push([joined, joined === 1 ? "family" : "families"]);
    figures.push([singles, singles === 1 ? "single motif" : "single motifs"]);
  }
  if (job.merged.length > 0) figures.push([job.merged.length, "merged motifs"]);
  if (counts.refused > 0) figures.push([counts.refused, "motifs left out"]);
  append(byId("figures"), figures.map(([number, text]) =>
    el("p", {}, el("strong", {}, number.toLocaleString("en")), " ", text)));
}

// What each setting means. Others are shown by their names.
const SETTING_WORDS = {
  top: ["Top motifs", (value) => `the lists of top motifs have ${counted(value, "motif")}`],
  best: ["Best matches", (value) => `up to ${value} for each motif`],
  cutoff: ["Cutoff", (value) => `matches have a similarity of at least ${value}`],
  threads: ["Threads", (value) => String(value)],
  collection: ["Collection", (value) => (value === "none" ? "none" : String(value))],
  type: ["Matching", (value) => (value === "all" ? "within and across data sets" : "across data sets only")],
  format: ["Reports", (value) => (value === "all" ? "text, HTML and PDF" : String(value))],
  tree: ["Tree", (value) => (value ? "drawn" : "not drawn")],
  merge: ["Merging", (value) => (value ? "similar motifs are merged" : "none")],
  trim: ["Trimming", (value) => (value > 0 ? `outer columns below ${value} bits are cut` : "none")],
  max_q: ["Largest q", (value) => (value < 1 ? `matches with a higher q than ${value} are left out` : "no bound")],
  families: [
    "Families", ({linkage, cut, flanks}) => `motifs that are joined at ${cut} or below, by ${linkage} linkage; flanks ` +
      `of a common motif that fewer than ${Math.round(100 * flanks)} % of its members cover are cut`
  ],
  skip_bad: ["Unreadable motifs", (value) => (value ? "are left out" : "end the job")],
};

function drawSettings() {
  const pairs = Object.entries(job.record.settings).map(([name, value]) => {
    const words = SETTING_WORDS[name];
    return words ? [words[0], words[1](value)] : [name.replace(/_/g, " "), String(value)];
  });
  append(byId("settings"), [el("h3", {}, "Settings"), termList(pairs, "pairs")]);
}

function plainTable(caption, heads, rows) {
  return el(
      "table", {class: "plain"}, el("caption", {class: "offscreen"}, caption),
      el("thead", {}, el("tr", {}, heads.map((head) => el("th", {scope: "col"}, head)))),
      el("tbody", {},
         rows.map(
             (cells) =>
                 el("tr", {},
                    cells.map(
                        (cell) =>
                            el("td", {class: typeof cell === "number" ? "number" : null},
                               typeof cell === "number" ? cell.toLocaleString("en") : cell))))));
}

function drawFiles() {
  const {inputs, datasets} = job.record;
  append(byId("files"), [
    el("h3", {}, "Files"),
    el("div", {class: "scroller"},
      plainTable("Files that were read", ["File", "Motifs read", "Left out"],
        inputs.map((input) => [input.file === "-" ? "standard input" : input.file, input.taken, input.refused]))),
    el("h3", {}, "Data sets"),
    el("ul", {class: "datasets"}, datasets.map((dataset) =>
      el("li", {}, datasetMark(dataset.dataset), " ", dataset.dataset, " ",
        el("span", {class: "muted"}, counted(dataset.motifs, "motif"))))),
  ]);
}

function drawNotes() {
  const notes = job.record.notes.map((note) => el("li", {}, note));
  if (job.matches.total > matches.rows) {
    notes.push(
        el("li", {},
           `This page shows the first ${matches.rows.toLocaleString("en")} of ` +
               `${job.matches.total.toLocaleString("en")} matches; `,
           el("a", {href: "matches.tsv"}, "matches.tsv"), " has them all."));
  }
  for (let row = 0; row < skipped.rows; ++row) {
    notes.push(
        el("li", {},
           `Left out: ${skipped.value("motif", row) || "a motif"} (${skipped.value("file", row)}, line ` +
               `${skipped.value("line_1based", row)}): ${skipped.value("reason", row)}`));
  }
  inputMotifs.forEach((motif, row) => {
    const cut = motifTable.value("trimmed_left", row) + motifTable.value("trimmed_right", row);
    if (cut > 0) notes.push(el("li", {}, motifLink(motif), `: ${counted(cut, "outer column")} cut`));
    if (motif.note) notes.push(el("li", {}, motifLink(motif), `: ${motif.note}`));
  });
  if (notes.length === 0) return;
  const most = 8;
  append(
      byId("notes"),
      [el("div", {class: "notice"}, el("h3", {}, "Notes"), el("ul", {}, notes.slice(0, most)),
          notes.length > most &&
              el("details", {}, el("summary", {}, `${notes.length - most} more`), el("ul", {}, notes.slice(most))))]);
}

const FAMILY_FILE = /^famil(ies|y_)[^/]*$/;

// Each group of links, with the files that belong to it. The first that fits takes a file.
const LINK_GROUPS = [
  ["Families", FAMILY_FILE],
  ["Tables", /^[^/]+\.tsv$|^matches\.json$|^job\.json$/],
  ["Motif files", /^[^/]+\.(meme|jaspar|transfac)$/],
  ["Trees", /^[^/]+\.(nwk|png)$|^result\/.*(Tree|Distance_Matrix|Plot_File)[^/]*$/],
  ["Reports to look at", /^result\/[^/]*\.(html|pdf)$/],
  ["Reports as text", /^result\/[^/]*\.txt$/],
  ["To repeat the job", /^(answers\.txt|console\.txt|run)$/],
];

function fileLink(path) {
  const name = path.replace(/^result\//, "").replace(/^J_\d{4}-\d\d-\d\d_\d+_/, "").replace(/_/g, "_\u200b");
  return el("a", {href: path.split("/").map(encodeURIComponent).join("/")}, name);
}

function drawLinks() {
  const paths = [...job.record.files.map((file) => file.file), "job.json"];
  const groups = new Map(LINK_GROUPS.map(([title]) => [title, []]));
  for (const path of paths) {
    const group = LINK_GROUPS.find(([, pattern]) => pattern.test(path));
    if (group) groups.get(group[0]).push(path);
  }
  append(byId("links"), [el("h3", {}, "Files of this job"), el("div", {class: "links"},
    [...groups].filter(([, found]) => found.length > 0).map(([title, found]) =>
      el("div", {}, el("h4", {}, title), el("ul", {}, found.map((path) => el("li", {}, fileLink(path)))))))]);
}

// A data set is told by shape and colour. There are eight of each; further data sets begin again.
const MARKS = 8;
const MARK_PATHS = [
  "M 6 1 A 5 5 0 1 1 5.99 1 Z",
  "M 1.5 1.5 H 10.5 V 10.5 H 1.5 Z",
  "M 6 1 L 11.5 10.5 H 0.5 Z",
  "M 6 0 L 12 6 L 6 12 L 0 6 Z",
  "M 4 0.5 H 8 V 4 H 11.5 V 8 H 8 V 11.5 H 4 V 8 H 0.5 V 4 H 4 Z",
  "M 6 11 L 0.5 1.5 H 11.5 Z",
  "M 3 1 H 9 L 12 6 L 9 11 H 3 L 0 6 Z",
  "M 6 0 L 7.6 4.2 H 12 L 8.5 7 L 9.8 11.5 L 6 8.8 L 2.2 11.5 L 3.5 7 L 0 4.2 H 4.4 Z",
];

function markNumber(dataset) {
  return Math.max(0, datasetNames.indexOf(dataset)) % MARKS;
}

function markPath(dataset) {
  const number = markNumber(dataset);
  return svgEl("path", {class: `mark mark-${number}`, d: MARK_PATHS[number]});
}

function datasetMark(dataset) {
  if (!datasetNames.includes(dataset)) return "";
  return svgEl(
      "svg", {class: "mark-picture", viewBox: "0 0 12 12", width: 12, height: 12, "aria-hidden": "true"},
      markPath(dataset));
}

function motifLink(motif) {
  return el("a", {href: motif.hash, title: motif.name.length > 30 && motif.name}, motif.name);
}

function drawOverview() {
  drawJobLine();
  drawFigures();
  drawNotes();
  drawSettings();
  drawFiles();
  drawLinks();
  const used = [
    window.jQuery && "jQuery (MIT)", window.jQuery && jQuery.fn.DataTable && "DataTables (MIT)",
    window.d3 && `D3 ${d3.version} (${parseInt(d3.version, 10) < 7 ? "BSD" : "ISC"})`
  ].filter(Boolean);
  byId("libraries").textContent = used.length > 0 ? `It holds these libraries: ${used.join(", ")}.` : "";
}
