// Logos: the letters of each position as high as their share of its information.
"use strict";

// Outlines in a box of 100 by 100, y downwards: M and L with a point, C with three, Z.
const GLYPHS = {
  A: "M 0 100 L 37 0 L 63 0 L 100 100 L 79 100 L 72 78 L 28 78 L 21 100 Z M 34 61 L 66 61 L 50 13 Z",
  C: "M 98 33 C 94 12 76 0 52 0 C 20 0 0 20 0 50 C 0 80 20 100 52 100 C 76 100 94 88 98 66 L 77 61 " +
     "C 74 76 65 83 52 83 C 33 83 21 71 21 50 C 21 29 33 17 52 17 C 65 17 74 24 77 38 Z",
  G: "M 97 32 C 92 11 75 0 52 0 C 20 0 0 20 0 50 C 0 80 20 100 52 100 C 72 100 88 93 99 82 L 99 46 L 52 46 L 52 63 " +
     "L 79 63 L 79 73 C 72 80 63 83 53 83 C 33 83 21 71 21 50 C 21 29 33 17 53 17 C 65 17 73 23 76 37 Z",
  T: "M 0 0 L 100 0 L 100 17 L 61 17 L 61 100 L 39 100 L 39 17 L 0 17 Z",
};
const OUTLINES = BASES.map((letter) => GLYPHS[letter].split(" ").map((part) => (isNaN(part) ? part : Number(part))));

const LEAST_HEIGHT = 0.4;  // pixels; lower letters are not seen

// The path of a letter that fills the box at x, y.
function letterPath(base, x, y, width, height) {
  let isX = true;
  return OUTLINES[base].map((part) => {
    if (typeof part === "string") return part;
    const place = isX ? x + (part * width) / 100 : y + (part * height) / 100;
    isX = !isX;
    return place.toFixed(1);
  }).join(" ");
}

// 0 to 2 bits.
function informationOf(values) {
  const total = values.reduce((sum, value) => sum + value, 0);
  if (total <= 0) return 0;
  return Math.max(
      0, values.reduce((sum, value) => (value > 0 ? sum + (value / total) * Math.log2(value / total) : sum), 2));
}

// The letters of a matrix, one path for each base, in a group. Position `first` stands at x = 0.
function logoLetters(positions, columnWidth, height, first = 0) {
  const paths = BASES.map(() => []);
  const gap = Math.min(1, columnWidth / 16);
  positions.forEach((values, place) => {
    const bits = informationOf(values);
    const total = values.reduce((sum, value) => sum + value, 0);
    let y = height;
    for (const base of [...SAME].sort((one, other) => values[one] - values[other])) {
      const letterHeight = total > 0 ? ((values[base] / total) * bits * height) / 2 : 0;
      if (letterHeight < LEAST_HEIGHT) continue;
      y -= letterHeight;
      paths[base].push(letterPath(base, (place + first) * columnWidth + gap, y, columnWidth - 2 * gap, letterHeight));
    }
  });
  return svgEl("g", {}, BASES.map((letter, base) => paths[base].length > 0 &&
    svgEl("path", {class: `base-${letter}`, "fill-rule": "evenodd", d: paths[base].join(" ")})));
}

// A logo as a picture of its own.
function logo(positions, {columnWidth = 18, height = 56, label, hasScale = false}) {
  const left = hasScale ? 20 : 0;
  const width = left + positions.length * columnWidth;
  const letters = logoLetters(positions, columnWidth, height);
  letters.setAttribute("transform", `translate(${left} 0)`);
  const bottom = hasScale ? 16 : 1;
  const picture = svgEl("svg", {
    class: "logo", role: "img", "aria-label": label, viewBox: `0 0 ${width} ${height + bottom}`, width,
    height: height + bottom,
  }, letters, svgEl("path", {class: "logo-line", d: `M ${left} ${height + 0.5} H ${width}`}));
  if (hasScale) {
    picture.append(svgEl("path", {class: "logo-line", d: `M ${left - 0.5} 0 V ${height}`}));
    for (const bits of [0, 1, 2]) {
      const y = height - (bits * height) / 2;
      picture.append(
          svgEl("text", {class: "logo-text", x: left - 5, y: Math.max(9, y + 3), "text-anchor": "end"}, String(bits)));
    }
    positions.forEach((_, place) => {
      if ((place + 1) % 5 !== 0 && place !== 0) return;
      picture.append(svgEl("text", {
        class: "logo-text", x: left + (place + 0.5) * columnWidth, y: height + 13, "text-anchor": "middle",
      }, String(place + 1)));
    });
  }
  return picture;
}

function strongestBase(values) {
  return values.indexOf(Math.max(...values));
}
