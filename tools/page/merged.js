// The merged motifs, with their members aligned beneath.
"use strict";

const MERGED_AT_ONCE = 20;
let mergedShown = MERGED_AT_ONCE;

function mergedName(merged) {
  return `${merged.name} (${listName(merged.list).toLowerCase()})`;
}

function mergedPositions(merged) {
  return positionsOf(merged.matrix);
}

function mergedForDownload(merged) {
  return {id: merged.id, name: merged.name, positions: mergedPositions(merged)};
}

function mergedPicture(merged) {
  const members = merged.members.map((member) => {
    const motif = motifByNumber.get(member.motif);
    const words = `${strandSign(member.strand)} ${member.strand}`;
    return {...member, motif, positions: motif.strand(member.strand), words};
  });
  return framedPicture(
      {
        name: merged.name,
        words: "merged",
        label: `Logo of the merged motif ${merged.name}`,
        positions: mergedPositions(merged)
      },
      members);
}

function mergedCard(merged) {
  return el(
      "article", {class: "card wide", id: `merged-${merged.id}`, tabindex: "-1"},
      el("div", {class: "dialog-head"},
         el("h3", {}, merged.name, el("span", {class: "second"}, ` ${listName(merged.list)}`)),
         el("div", {class: "buttons"}, downloadButtons(merged.id, () => [mergedForDownload(merged)]))),
      framedPlate(merged.members.length, () => mergedPicture(merged)),
      el("p", {class: "muted small"}, `${counted(merged.members.length, "member")}. `,
         merged.left_out > 0 &&
             `${counted(merged.left_out, "match", "matches")} of the group did not fit and ${
                 merged.left_out === 1 ? "was" : "were"} left out. `,
         el("a", {href: `#merged=${encodeURIComponent(merged.id)}`}, "Link to this motif")));
}

function wantedMerged() {
  const list = byId("merged-list").value;
  return job.merged.filter((merged) => !list || merged.list === list);
}

function drawMergedCards() {
  const wanted = wantedMerged();
  replaceChildren(byId("merged-cards"), wanted.slice(0, mergedShown).map(mergedCard));
  byId("merged-count").textContent = counted(wanted.length, "merged motif");
  byId("more-merged").hidden = wanted.length <= mergedShown;
}

function showMerged(id) {
  const place = job.merged.findIndex((merged) => merged.id === id);
  if (place < 0) {
    say("This page has no such merged motif.");
    return;
  }
  byId("merged-list").value = "";
  mergedShown = Math.max(mergedShown, place + 1);
  drawMergedCards();
  const card = byId(`merged-${id}`);
  card.scrollIntoView();
  card.focus({preventScroll: true});
}

function drawMerged() {
  if (job.merged.length === 0) return;
  byId("merged").hidden = false;
  const lists =
      [...new Set(job.merged.map((merged) => merged.list))].sort((one, other) => placeOfList(one) - placeOfList(other));
  fillSelect(byId("merged-list"), "all lists", lists, listName);
  drawMergedCards();
  byId("merged-list").addEventListener("change", () => {
    mergedShown = MERGED_AT_ONCE;
    drawMergedCards();
  });
  byId("more-merged").addEventListener("click", () => {
    mergedShown += MERGED_AT_ONCE;
    drawMergedCards();
  });
  byId("merged-meme")
      .addEventListener(
          "click", () => downloadText("merged_motifs.meme", memeText(wantedMerged().map(mergedForDownload))));
  byId("merged-jaspar")
      .addEventListener(
          "click", () => downloadText("merged_motifs.jaspar", jasparText(wantedMerged().map(mergedForDownload))));
}
