// The motifs of the job as cards, and a window with all about one of them.
"use strict";

const MOTIFS_AT_ONCE = 60;
const motifFilters = {words: [], dataset: "", order: "place"};
let motifsShown = MOTIFS_AT_ONCE;

// The best match of a motif: the first of the best list that it is in.
function bestMatchOf(motif) {
  let best = null;
  for (const row of matchRowsOf(motif)) {
    if (best === null || placeOfList(matches.value("list", row)) < placeOfList(matches.value("list", best))) best = row;
  }
  return best;
}

// A match of a motif, seen from it.
function partnerOf(motif, row) {
  return motif.isReference ? queryOf(row) : targetOf(row);
}

function bestSimilarity(motif) {
  return Math.max(-1, ...matchRowsOf(motif).map((row) => matches.value("similarity", row)));
}

const MOTIF_ORDERS = {
  place: () => 0,
  name: (one, other) => one.name.localeCompare(other.name, "en", {numeric: true}),
  bits: (one, other) => other.bits - one.bits,
  best: (one, other) => bestSimilarity(other) - bestSimilarity(one),
};

function wantedMotifs() {
  const {words, dataset, order} = motifFilters;
  return inputMotifs.filter((motif) => {
    const text = `${motif.name}\n${motif.second}\n${motif.consensus}\n${motif.reverseConsensus}`.toLowerCase();
    return (!dataset || motif.dataset === dataset) && words.every((word) => text.includes(word));
  }).sort(MOTIF_ORDERS[order]);
}

function logoLabel(motif, what = "") {
  return `Logo of ${motif.name}${what}, consensus ${motif.consensus}`;
}

// A picture that is drawn when it comes near the window.
function lazyLogo(draw) {
  return whenNear(el("div", {class: "plate"}), (plate) => plate.append(draw()));
}

function cardOf(motif) {
  const best = bestMatchOf(motif);
  return el(
      "li", {class: "card", id: `card-${motif.number}`},
      el("h3", {}, motifLink(motif),
         motif.second && motif.second !== motif.name ? el("span", {class: "second"}, ` ${motif.second}`) : null),
      lazyLogo(() => logo(motif.positions, {label: logoLabel(motif)})),
      el("p", {class: "mono consensus"}, motif.consensus),
      el("p", {class: "muted small"}, datasetMark(motif.dataset),
         ` ${motif.dataset} · ${motif.positions.length} columns · ${motif.bits.toFixed(1)} bits`),
      el("p", {class: "small"}, best === null ? el("span", {class: "muted"}, "no match above the cutoff") : [
        "Best match: ", motifLink(partnerOf(motif, best)), ` ${shortNumber(matches.value("similarity", best))}`
      ]));
}

function drawMotifCards() {
  const wanted = wantedMotifs();
  replaceChildren(byId("motif-cards"), wanted.slice(0, motifsShown).map(cardOf));
  byId("motif-count").textContent = wanted.length === inputMotifs.length ? counted(wanted.length, "motif")
    : `${wanted.length.toLocaleString("en")} of ${counted(inputMotifs.length, "motif")}`;
  byId("more-motifs").hidden = wanted.length <= motifsShown;
}

// Matches of a motif as a short table, one for each list.
function matchTables(motif) {
  const byList = new Map();
  for (const row of matchRowsOf(motif)) {
    const list = matches.value("list", row);
    if (!byList.has(list)) byList.set(list, []);
    byList.get(list).push(row);
  }
  const significance = ["p_value", "e_value", "q_value"].filter((name) => matches.has(name));
  return [...byList]
      .sort(([one], [other]) => placeOfList(one) - placeOfList(other))
      .map(
          ([list, rows]) =>
              [el("h4", {}, listName(list)),
               el("div", {class: "scroller"},
                  plainTable(
                      `Matches of ${motif.name}: ${listName(list)}`,
                      [
                        motif.isReference ? "Query" : "Match", "Strand", "Overlap", "Similarity",
                        ...significance.map((name) => COLUMN_WORDS[name].head), "Alignment"
                      ],
                      rows.map(
                          (row) =>
                              [motifLink(partnerOf(motif, row)),
                               COLUMN_WORDS.orientation.fill(row),
                               String(matches.value("overlap", row)),
                               shortNumber(matches.value("similarity", row)),
                               ...significance.map((name) => shortNumber(matches.value(name, row))),
                               el("a", {
                                 href: `#match=${encodeURIComponent(matchKey(row))}`,
                                 "aria-label": `Alignment with ${partnerOf(motif, row).name}`
                               },
                                  "show"),
  ])))]);
}

function matrixTable(motif) {
  return el("div", {class: "scroller"}, plainTable(`Matrix of ${motif.name}`, ["Position", ...BASES],
    motif.positions.map((values, place) => [String(place + 1), ...values.map((value) => value.toFixed(3))])));
}

function forDownload(motif) {
  return {id: motif.name, name: motif.second || motif.name, positions: motif.positions};
}

function downloadButtons(name, motifs) {
  return [
    el("button", {type: "button", click: () => downloadText(fileNameOf(name, "meme"), memeText(motifs()))}, "MEME"),
    el("button", {type: "button", click: () => downloadText(fileNameOf(name, "jaspar"), jasparText(motifs()))},
       "Jaspar"),
  ];
}

function reverseLogos(motif) {
  const compared = motif.comparedReverse();
  const real = motif.trueReverse();
  const differs = JSON.stringify(compared) !== JSON.stringify(real);
  const figure = (positions, words) =>
      el("figure", {},
         el("div", {class: "plate scroller"},
            logo(
                positions,
                {columnWidth: 24, height: 72, hasScale: true, label: logoLabel(motif, `, ${words.toLowerCase()}`)})),
         el("figcaption", {}, words));
  return el("div", {class: "logos"}, figure(motif.positions, "Forward"),
    figure(compared, differs ? "Reverse complement, as compared" : "Reverse complement"),
    differs && figure(real, "True reverse complement"));
}

function mergedLinks(motif) {
  const found = job.merged.filter(
      (merged) => !motif.isReference && merged.members.some((member) => member.motif === motif.number));
  if (found.length === 0) return null;
  return el(
      "p", {}, "Part of ", counted(found.length, "merged motif"), ": ",
      found.slice(0, 20).map(
          (merged, place) =>
              [place > 0 ? ", " : "", el("a", {href: `#merged=${encodeURIComponent(merged.id)}`}, mergedName(merged))]),
      found.length > 20 ? " and more" : "", ".");
}

function familyWords(family) {
  return [familyLink(family), isSingle(family) ? ", a single motif" : `, ${counted(family.members.length, "motif")}`];
}

function motifFacts(motif) {
  return [
    [motif.isReference ? "Collection" : "Data set", motif.dataset],
    ["Number", String(motif.number)],
    ["File", `${motif.file}, line ${motif.line}`],
    ["Length", counted(motif.positions.length, "column")],
    ["Information content", `${motif.bits.toFixed(2)} bits`],
    ["Consensus", el("span", {class: "mono"}, motif.consensus)],
    motif.reverseConsensus ? ["Reverse complement", el("span", {class: "mono"}, motif.reverseConsensus)] : null,
    familyOf(motif) && ["Family", familyWords(familyOf(motif))],
    motif.note ? ["Note", motif.note] : null,
  ].filter(Boolean);
}

function openMotif(motif) {
  const dialog = byId("motif-dialog");
  const tables = matchTables(motif);
  replaceChildren(
      dialog,
      el("div", {class: "dialog-head"},
         el("h2", {id: "motif-dialog-title", tabindex: "-1"}, motif.name,
            motif.second && motif.second !== motif.name ? el("span", {class: "second"}, ` ${motif.second}`) : null),
         el("button", {type: "button", class: "close", click: () => dialog.close()}, "Close")),
      reverseLogos(motif), termList(motifFacts(motif), "pairs"), mergedLinks(motif),
      el("div", {class: "toolbar slim"}, el("span", {}, "Download as"),
         downloadButtons(motif.name, () => [forDownload(motif)]),
         el("button", {type: "button", click: () => showMatchesOf(motif)}, "Show in the table of matches"),
         canShowInTree(motif) &&
             el("button", {
               type: "button",
               click: () => {
                 dialog.close();
                 showInTree(motif);
               }
             },
                "Show in the tree")),
      el("h3", {}, motif.isReference ? "Matched by" : "Matches"),
      tables.length > 0 ? tables : el("p", {class: "muted"}, "No match above the cutoff."),
      el("details", {}, el("summary", {}, "Matrix"), matrixTable(motif)));
  if (!dialog.open) dialog.showModal();
  dialog.scrollTop = 0;
  byId("motif-dialog-title").focus();
}

function showMatchesOf(motif) {
  byId("motif-dialog").close();
  resetFilters();
  byId("filter-name").value = motif.name;
  applyFilters();
  byId("matches").scrollIntoView();
  byId("filter-name").focus({preventScroll: true});
}

function drawMotifs() {
  fillSelect(byId("motif-dataset"), "all", datasetNames);
  drawMotifCards();
  const form = byId("motif-filters");
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("input", later(() => {
    motifFilters.words = byId("motif-name").value.toLowerCase().split(/\s+/).filter(Boolean);
    motifFilters.dataset = byId("motif-dataset").value;
    motifFilters.order = byId("motif-order").value;
    motifsShown = MOTIFS_AT_ONCE;
    drawMotifCards();
  }, 120));
  byId("more-motifs").addEventListener("click", () => {
    motifsShown += MOTIFS_AT_ONCE;
    drawMotifCards();
  });
  // The address names the window while it is open.
  byId("motif-dialog").addEventListener("close", () => {
    if (/^#(motif|reference)=/.test(location.hash)) history.replaceState(null, "", location.pathname + location.search);
  });
  byId("motif-dialog").addEventListener("click", (event) => {
    if (event.target === byId("motif-dialog")) byId("motif-dialog").close();
  });
}
