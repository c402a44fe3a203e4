// A motif that was made of others, with its members aligned beneath: of merged motifs and of families.
"use strict";

const FRAMED = {columnWidth: 20, height: 64, memberHeight: 38, rowGap: 4, padding: 18};

function strandSign(strand) {
  return strand === "forward" ? "+" : "\u2212";
}

// One line of the picture: a matrix whose first position stands in column `first` of the frame.
function framedLogo(positions, frame, first, height, label) {
  const {columnWidth} = FRAMED;
  return svgEl(
      "svg", {
        class: "logo",
        role: "img",
        "aria-label": label,
        viewBox: `0 0 ${frame.columns * columnWidth} ${height + 1}`,
        width: frame.columns * columnWidth,
        height: height + 1,
      },
      frame.shaded && svgEl("rect", {
        class: "overlap",
        x: frame.shaded.first * columnWidth,
        y: 0,
        width: frame.shaded.columns * columnWidth,
        height
      }),
      logoLetters(positions, columnWidth, height, first),
      svgEl(
          "path",
          {class: "logo-line", d: `M ${first * columnWidth} ${height + 0.5} h ${positions.length * columnWidth}`}));
}

// `whole` is {name, words, label, positions}. A member is {motif, strand, positions, offset}, with positions as they
// are on the strand and the column of the whole that faces its first one, words for under its name, and `isFound`.
function framedPicture(whole, members) {
  const first = Math.min(0, ...members.map((member) => member.offset));
  const end = Math.max(
      whole.positions.length, ...members.map((member) => member.offset + member.positions.length));
  const frame = {columns: end - first, shaded: {first: -first, columns: whole.positions.length}};
  const line = (name, words, picture, isFound) =>
      [el("div", {class: isFound ? "frame-name found" : "frame-name"}, name, el("small", {}, words)), picture];
  return el(
      "div", {class: "frame scroller", tabindex: "0", role: "region", "aria-label": `Members of ${whole.name}`},
      line(
          el("strong", {}, whole.words), counted(whole.positions.length, "column"),
          framedLogo(whole.positions, frame, -first, FRAMED.height, whole.label)),
      members.map(
          (member) => line(
              motifLink(member.motif), member.words,
              framedLogo(
                  member.positions, frame, member.offset - first, FRAMED.memberHeight,
                  logoLabel(member.motif, `, ${member.strand}`)),
              member.isFound)));
}

// The plate of such a picture, which is drawn when it comes near. Until then it keeps the room for it, so that nothing
// moves while one scrolls.
function framedPlate(memberCount, draw) {
  const plate = el("div", {class: "plate tall"});
  const rows = memberCount * (FRAMED.memberHeight + 1 + FRAMED.rowGap);
  plate.style.minHeight = `${FRAMED.padding + FRAMED.height + 1 + rows}px`;
  return whenNear(plate, () => plate.append(draw()));
}
