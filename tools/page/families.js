// The families of motifs that are alike, each with its common motif and its members aligned beneath.
"use strict";

const FAMILIES_AT_ONCE = 20;
const MEMBERS_AT_ONCE = 12;  // of one family; a button shows the others
const familyFilters = {words: [], dataset: ""};
let familiesShown = FAMILIES_AT_ONCE;

// The nearest members first. `nearest` is the name of the first one; it is the second name of the common motif.
const families = job.families.map((stored) => ({
  name: stored.id,
  nearest: stored.name,
  cutHeight: stored.cut_height,
  consensus: stored.consensus,
  positions: positionsOf(stored.matrix),
  members: stored.members.map((member) => ({...member, motif: motifByNumber.get(member.motif)}))
               .sort((one, other) => one.distance - other.distance),
}));
const familyOfMotif = new Map(families.flatMap((family) => family.members.map((member) => [member.motif, family])));
const chosenFamilies = new Set();
const wholeFamilies = new Set();  // those whose members are all shown

function isSingle(family) {
  return family.members.length === 1;
}

function familyOf(motif) {
  return familyOfMotif.get(motif);
}

function familyAddress(family) {
  return `#family=${encodeURIComponent(family.name)}`;
}

function familyLink(family) {
  return el("a", {href: familyAddress(family)}, family.name);
}

function cardOfFamily(family) {
  return byId(`family-${family.name}`);
}

// What the search looks through, in small letters.
function memberText(member) {
  return `${member.motif.name}\n${member.motif.second}`.toLowerCase();
}

function isMemberFound(member) {
  const {words} = familyFilters;
  return words.length > 0 && words.every((word) => memberText(member).includes(word));
}

function hasFilter() {
  return familyFilters.words.length > 0 || familyFilters.dataset !== "";
}

// A family is wanted if its name, or that of a member, has all the words.
function isWanted(family) {
  const {words, dataset} = familyFilters;
  return (!dataset || family.members.some((member) => member.motif.dataset === dataset)) &&
      (words.length === 0 || words.every((word) => family.name.toLowerCase().includes(word)) ||
       family.members.some(isMemberFound));
}

function familyForDownload(family) {
  return {id: family.name, name: family.nearest, positions: family.positions};
}

// Those that were chosen; if none is, all that are wanted.
function familiesToDownload() {
  return families.filter((family) => (chosenFamilies.size > 0 ? chosenFamilies.has(family) : isWanted(family)));
}

function familyBits(family) {
  return family.positions.reduce((sum, values) => sum + informationOf(values), 0);
}

function familyLabel(family) {
  return `Logo of the common motif of ${family.name}, consensus ${family.consensus}`;
}

// The nearest members, those that the search found, or all.
function shownMembers(family) {
  if (wholeFamilies.has(family) || family.members.length <= MEMBERS_AT_ONCE + 1) return family.members;
  return family.members.filter((member, place) => place < MEMBERS_AT_ONCE || isMemberFound(member));
}

function familyPicture(family, members) {
  return framedPicture(
      {name: family.name, words: "common motif", label: familyLabel(family), positions: family.positions},
      members.map((member) => ({
        ...member,
        positions: member.motif.strand(member.strand, true),
        words: `${strandSign(member.strand)} strand, distance ${shortNumber(member.distance)}`,
        isFound: isMemberFound(member),
      })));
}

// How many members each data set has; nothing if there is one alone.
function datasetCounts(family) {
  if (datasetNames.length < 2) return [];
  return datasetNames.map((name) => [name, family.members.filter((member) => member.motif.dataset === name).length])
      .filter(([, count]) => count > 0)
      .map(([name, count]) => el("span", {}, datasetMark(name), ` ${count} of ${name}`));
}

function chooser(family) {
  return el("label", {class: "chooser"}, el("input", {
    type: "checkbox",
    checked: chosenFamilies.has(family),
    "aria-label": `Choose ${family.name}`,
    change: (event) => {
      if (event.target.checked) chosenFamilies.add(family);
      else chosenFamilies.delete(family);
      sayChosen();
    },
  }), " Choose");
}

// Draws the card anew with all its members.
function showAllMembers(family) {
  wholeFamilies.add(family);
  cardOfFamily(family).replaceWith(familyCard(family));
  cardOfFamily(family).focus({preventScroll: true});
}

// Its nearest member says more than its number.
function familySize(family) {
  return `${counted(family.members.length, "motif")} like ${family.nearest}`;
}

function familyCard(family) {
  const members = shownMembers(family);
  return el(
      "li", {class: "card wide", id: `family-${family.name}`, tabindex: "-1"},
      el("div", {class: "dialog-head"},
         el("h3", {}, family.name, " ", el("span", {class: "second"}, familySize(family))),
         el("div", {class: "buttons"}, chooser(family),
            downloadButtons(family.name, () => [familyForDownload(family)]))),
      framedPlate(members.length, () => familyPicture(family, members)),
      members.length < family.members.length &&
          el("p", {class: "buttons"}, el("button", {type: "button", click: () => showAllMembers(family)},
             `Show all ${counted(family.members.length, "member")}`)),
      el("p", {class: "muted small facts"}, el("span", {class: "mono"}, family.consensus),
         el("span", {}, `${familyBits(family).toFixed(1)} bits`),
         el("span", {}, `joined at ${shortNumber(family.cutHeight)}`), datasetCounts(family),
         el("a", {href: familyAddress(family)}, "Link to this family")));
}

// A card with the common motif alone; of a single motif, it is the motif.
function smallFamilyCard(family) {
  const {motif} = family.members[0];
  return el(
      "li", {class: "card", id: `family-${family.name}`, tabindex: "-1"},
      el("div", {class: "card-head"},
         el("h3", {}, isSingle(family) ? motifLink(motif) : familyLink(family), " ",
            el("span", {class: "second"}, isSingle(family) ? family.name : familySize(family))),
         chooser(family)),
      lazyLogo(() => logo(family.positions, {label: familyLabel(family)})),
      el("p", {class: "mono consensus"}, family.consensus),
      el("p", {class: "muted small"},
         isSingle(family) ? [datasetMark(motif.dataset), ` ${motif.dataset}`]
           : `joined at ${shortNumber(family.cutHeight)}`));
}

function hasMembersShown() {
  return byId("family-view").value === "members";
}

// The list of single motifs is filled when it is opened.
function drawSingles(wanted) {
  const all = families.filter(isSingle);
  const details = byId("single-motifs");
  // What a search finds here alone is not left hidden.
  if (hasFilter() && wanted.length > 0 && !families.some((family) => !isSingle(family) && isWanted(family))) {
    details.open = true;
  }
  details.hidden = all.length === 0;
  byId("single-count").textContent = wanted.length === all.length ? counted(all.length, "single motif")
    : `${wanted.length.toLocaleString("en")} of ${counted(all.length, "single motif")}`;
  replaceChildren(byId("single-cards"), details.open ? wanted.map(smallFamilyCard) : []);
}

function drawFamilyCards() {
  const wanted = families.filter(isWanted);
  const joined = wanted.filter((family) => !isSingle(family));
  const shown = joined.slice(0, familiesShown);
  const hasMembers = hasMembersShown();
  byId("family-cards").className = hasMembers ? "cards roomy" : "cards";
  replaceChildren(byId("family-cards"), shown.map(hasMembers ? familyCard : smallFamilyCard));
  const all = families.filter((family) => !isSingle(family)).length;
  byId("family-count").textContent = joined.length === all ? counted(all, "family", "families")
    : `${joined.length.toLocaleString("en")} of ${counted(all, "family", "families")}`;
  byId("more-families").hidden = byId("all-families").hidden = joined.length <= familiesShown;
  byId("all-families").textContent = `Show all ${joined.length.toLocaleString("en")}`;
  drawSingles(wanted.filter(isSingle));
  sayChosen();
}

// What the downloads hold.
function sayChosen() {
  const count = familiesToDownload().length;
  const number = count.toLocaleString("en");
  let words = `the ${number} ${chosenFamilies.size > 0 ? "chosen" : "found"}`;
  if (count === families.length) words = `all ${number}`;
  if (count === 0) words = "none";
  for (const [extension, name] of [["meme", "MEME"], ["jaspar", "Jaspar"]]) {
    byId(`family-${extension}`).textContent = `Download ${words} as ${name}`;
    byId(`family-${extension}`).disabled = count === 0;
  }
  byId("choose-none").hidden = chosenFamilies.size === 0;
  byId("chosen-families").textContent = chosenFamilies.size > 0 ? `${number} chosen` : "";
}

function redrawFamilies() {
  familiesShown = FAMILIES_AT_ONCE;
  drawFamilyCards();
}

// Opens the family of a link.
function showFamily(name) {
  const family = families.find((one) => one.name === name);
  if (!family) {
    say("This page has no such family.");
    return;
  }
  byId("family-filters").reset();
  readFamilyFilters();
  if (isSingle(family)) byId("single-motifs").open = true;
  familiesShown = Math.max(familiesShown, families.indexOf(family) + 1);
  drawFamilyCards();
  const card = cardOfFamily(family);
  card.scrollIntoView();
  card.focus({preventScroll: true});
}

function readFamilyFilters() {
  familyFilters.words = byId("family-name").value.toLowerCase().split(/\s+/).filter(Boolean);
  familyFilters.dataset = byId("family-dataset").value;
}

// The files of the folder with the families, those that were written.
function drawFamilyFiles() {
  const paths = job.record.files.map((file) => file.file).filter((path) => FAMILY_FILE.test(path));
  append(byId("family-files"), paths.map((path, place) => [place > 0 ? ", " : "Files of all: ", fileLink(path)]));
}

function drawFamilies() {
  if (families.length === 0) return;
  byId("families").hidden = false;
  fillSelect(byId("family-dataset"), "all", datasetNames);
  drawFamilyCards();
  drawFamilyFiles();
  const form = byId("family-filters");
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("input", later(() => {
    readFamilyFilters();
    redrawFamilies();
  }, 120));
  byId("single-motifs").addEventListener("toggle", () => {
    if (!byId("single-cards").hasChildNodes()) drawSingles(families.filter(isSingle).filter(isWanted));
  });
  byId("more-families").addEventListener("click", () => {
    familiesShown += FAMILIES_AT_ONCE;
    drawFamilyCards();
  });
  byId("all-families").addEventListener("click", () => {
    familiesShown = families.length;
    drawFamilyCards();
  });
  byId("choose-found").addEventListener("click", () => {
    families.filter(isWanted).forEach((family) => chosenFamilies.add(family));
    drawFamilyCards();
  });
  byId("choose-none").addEventListener("click", () => {
    chosenFamilies.clear();
    drawFamilyCards();
  });
  for (const [extension, textOf] of [["meme", memeText], ["jaspar", jasparText]]) {
    byId(`family-${extension}`)
        .addEventListener(
            "click",
            () => downloadText(`family_motifs.${extension}`, textOf(familiesToDownload().map(familyForDownload))));
  }
}
