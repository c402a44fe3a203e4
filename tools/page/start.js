// Draws the page, and follows its links: #motif=NUMBER, #reference=NUMBER, #merged=ID, #family=NAME,
// #match=LIST.RANK.RANK.
"use strict";

const ADDRESSES = {
  motif: (value) => openMotifNumbered(motifByNumber, value),
  reference: (value) => openMotifNumbered(referenceByNumber, value),
  merged: showMerged,
  family: showFamily,
  match: showMatch,
};

function openMotifNumbered(motifs, value) {
  const motif = motifs.get(Number(value));
  if (motif) openMotif(motif);
  else say("This page has no such motif.");
}

function followAddress() {
  const [, kind, value] = /^#(\w+)=(.*)$/.exec(location.hash) || [];
  if (!kind || !Object.hasOwn(ADDRESSES, kind)) return;
  if (kind !== "motif" && kind !== "reference") byId("motif-dialog").close();
  let text = value;
  try {
    text = decodeURIComponent(value);
  } catch {
    // A broken address is looked up as it stands, and not found.
  }
  ADDRESSES[kind](text);
}

// On paper there are all matches, up to a bound, and every picture.
const MOST_PRINTED = 1000;
let afterPrinting = null;

function beforePrinting() {
  drawAllNow();
  if (!byId("motif-dialog").open) afterPrinting = matchView.showAll(MOST_PRINTED);
}

drawOverview();
drawMatches();
drawMotifs();
drawMerged();
drawFamilies();
drawTree();
for (const link of document.querySelectorAll("[data-for]")) link.hidden = byId(link.dataset.for).hidden;
window.addEventListener("hashchange", followAddress);
window.addEventListener("beforeprint", beforePrinting);
window.addEventListener("afterprint", () => {
  if (afterPrinting) afterPrinting();
  afterPrinting = null;
});
followAddress();
document.documentElement.dataset.ready = "yes";
