// The distance table as a map, in the order of the tree. Near pairs are dark.
"use strict";

const MAP_SIZE = 560;  // pixels, at least, unless there are few motifs
const LARGEST_CELL = 22;
const MOST_IN_TABLE = 500;  // motifs; a browser cannot bear a larger table
// From far to near, each step darker than the one before.
const MAP_COLOURS = [[247, 250, 252], [208, 225, 240], [140, 183, 220], [66, 128, 188], [22, 74, 130], [6, 28, 64]];

function mixedColour(nearness) {
  const place = Math.min(0.9999, Math.max(0, nearness)) * (MAP_COLOURS.length - 1);
  const [from, to] = [MAP_COLOURS[Math.floor(place)], MAP_COLOURS[Math.floor(place) + 1]];
  return from.map((value, channel) => Math.round(value + (to[channel] - value) * (place % 1)));
}

// Most that matters happens among the small distances, so they get most of the colours.
function nearColour(share) {
  return mixedColour(1 - Math.sqrt(share));
}

// The motifs in the order of the leaves; without a tree, in their own.
function mapOrder(newick) {
  const numbers = [];
  for (const found of newick.matchAll(/[(,]\s*'?[A-Z](\d+)_/g)) numbers.push(Number(found[1]));
  const motifs = numbers.map((number) => motifByNumber.get(number)).filter(Boolean);
  return motifs.length === inputMotifs.length ? motifs : inputMotifs;
}

function distanceBetween(distances, one, other) {
  if (one === other) return 0;
  return distances[Math.max(one, other) - 2][Math.min(one, other) - 1];
}

// The best similarity that the lists have for a pair of input motifs.
const similarityOfPairs = (() => {
  let pairs = null;
  return (one, other) => {
    if (pairs === null) {
      pairs = new Map();
      for (let row = 0; row < matches.rows; ++row) {
        if (isAgainstReference(row)) continue;
        const ends = [queryOf(row).number, targetOf(row).number].sort((a, b) => a - b).join(" ");
        const known = pairs.get(ends);
        if (!known || known.similarity < matches.value("similarity", row)) {
          pairs.set(ends, {similarity: matches.value("similarity", row), overlap: matches.value("overlap", row)});
        }
      }
    }
    return pairs.get([one, other].sort((a, b) => a - b).join(" "));
  };
})();

// In the trees of the matches, pairs without a match have the largest distance, which lies far above the others.
function distanceScale({distances, of_families: isOfFamilies}) {
  const all = distances.flat().filter((value) => value !== null);
  const largest = all.reduce((most, value) => Math.max(most, value), 0);
  if (isOfFamilies) return {largest, next: largest || 1};
  const next = all.reduce((most, value) => (value < largest ? Math.max(most, value) : most), 0);
  return {largest, next: next || largest || 1};
}

function pairWords(map, row, column) {
  const [one, other] = [map.order[row], map.order[column]];
  if (one === other) return `${one.name}: the same motif`;
  const distance = distanceBetween(map.distances, one.number, other.number);
  const match = similarityOfPairs(one.number, other.number);
  const isFar = distance === map.scale.largest && map.scale.largest > map.scale.next && !match;
  return `${one.name} and ${other.name}: distance ${shortNumber(distance)}` + (isFar ? " (no match)" : "") +
    (match ? `, best similarity ${shortNumber(match.similarity)} over ${counted(match.overlap, "column")}` : "") +
    familiesOfPair(one, other);
}

function familiesOfPair(one, other) {
  if (!familyOf(one)) return "";
  if (familyOf(one) === familyOf(other)) return `; both in ${familyOf(one).name}`;
  return `; in ${familyOf(one).name} and ${familyOf(other).name}`;
}

// Families of more than one motif whose members stand side by side, as places in the order.
function familyBlocks(order) {
  const blocks = [];
  order.forEach((motif, place) => {
    const family = familyOf(motif);
    const last = blocks[blocks.length - 1];
    if (last && last.family === family) last.end = place + 1;
    else blocks.push({family, begin: place, end: place + 1});
  });
  return blocks.filter((block) => block.end - block.begin > 1);
}

// The colours from near to far as the pixels of an image have them, and white at the end, for pairs without a match.
const MAP_STEPS = 255;
const MAP_PALETTE = (() => {
  const pixels = new Uint32Array(MAP_STEPS + 2);
  const bytes = new Uint8ClampedArray(pixels.buffer);
  for (let step = 0; step <= MAP_STEPS; ++step) bytes.set([...nearColour(step / MAP_STEPS), 255], 4 * step);
  bytes.set([255, 255, 255, 255], 4 * (MAP_STEPS + 1));
  return pixels;
})();

function imageOfMap(context, map) {
  const {cell, scale} = map;
  const side = map.order.length * cell;
  const image = context.createImageData(side, side);
  const pixels = new Uint32Array(image.data.buffer);
  map.order.forEach((one, row) => {
    const top = row * cell * side;
    map.order.forEach((other, column) => {
      const distance = distanceBetween(map.distances, one.number, other.number);
      const isFar = distance === null || (distance === scale.largest && distance > scale.next);
      const colour = MAP_PALETTE[isFar ? MAP_STEPS + 1 : Math.round((distance / scale.next) * MAP_STEPS)];
      pixels.fill(colour, top + column * cell, top + (column + 1) * cell);
    });
    for (let y = 1; y < cell; ++y) pixels.copyWithin(top + y * side, top, top + side);
  });
  return image;
}

const OUTLINE = "#e07b00";

function paintMap(canvas, map) {
  const context = canvas.getContext("2d");
  map.image ??= imageOfMap(context, map);
  context.putImageData(map.image, 0, 0);
  context.strokeStyle = OUTLINE;
  context.lineWidth = map.cell < 4 ? 1 : 2;
  for (const {begin, end} of map.blocks) {
    const side = (end - begin) * map.cell;
    context.strokeRect(begin * map.cell + 0.5, begin * map.cell + 0.5, side - 1, side - 1);
  }
}

// Black and white, so that it is seen on every colour.
function paintMark(canvas, map) {
  const context = canvas.getContext("2d");
  for (const [colour, width] of [["#000", 4], ["#fff", 2]]) {
    context.strokeStyle = colour;
    context.lineWidth = width;
    context.strokeRect(map.column * map.cell - 1, map.row * map.cell - 1, map.cell + 2, map.cell + 2);
  }
}

function mapLegend(scale) {
  const canvas = el("canvas", {width: 180, height: 12, role: "img", "aria-label": "Scale of colours"});
  const context = canvas.getContext("2d");
  for (let x = 0; x < 180; ++x) {
    context.fillStyle = `rgb(${nearColour(x / 179).join(",")})`;
    context.fillRect(x, 0, 1, 12);
  }
  return el("p", {class: "legend"}, "near, 0 ", canvas, ` far, ${shortNumber(scale.next)}`,
    scale.largest > scale.next && el("span", {class: "muted"}, ` · white: no match (${shortNumber(scale.largest)})`));
}

function drawHeatMap(tree) {
  const area = byId("heat-map");
  if (!tree.distances) {
    replaceChildren(
        area,
        el("p", {class: "muted"}, "The heat map is left out for so many motifs.",
           !tree.of_families && " The distances are in the table of the job."));
    return;
  }
  const order = mapOrder(tree.newick);
  const cell = Math.min(LARGEST_CELL, Math.ceil(MAP_SIZE / order.length));
  const map = {
    order, cell, distances: tree.distances, scale: distanceScale(tree),
    blocks: tree.of_families ? familyBlocks(order) : [], row: 0, column: 0
  };
  const side = order.length * cell;
  const canvas = el("canvas", {
    class: "heat",
    width: side,
    height: side,
    tabindex: "0",
    role: "img",
    "aria-label": `Heat map of the distances of ${
        counted(order.length, "motif")}, in the order of the tree. Arrow keys go from pair to pair.`
  });
  const words =
      el("p", {class: "pair-words", role: "status"},
         "Point at a cell, or use the arrow keys, to read the values of a pair.");
  const tip = el("div", {class: "tip", hidden: true, "aria-hidden": "true"});
  const hideTip = () => { tip.hidden = true; };
  const point = (row, column) => {
    map.row = Math.max(0, Math.min(order.length - 1, row));
    map.column = Math.max(0, Math.min(order.length - 1, column));
    paintMap(canvas, map);
    paintMark(canvas, map);
    words.textContent = pairWords(map, map.row, map.column);
    tip.textContent = words.textContent;
    tip.hidden = false;
    // Beside the cell, on the side where there is more room.
    const [x, y] = [map.column, map.row].map((place) => ((place + 1) / order.length) * canvas.clientWidth);
    const isRight = map.column < order.length / 2 || canvas.clientWidth < 300;
    tip.style.top = `${y + 6}px`;
    tip.style.left = isRight ? `${Math.min(x + 6, canvas.clientWidth / 2)}px` : "auto";
    tip.style.right = isRight ? "auto" : `${canvas.clientWidth - x + cell + 6}px`;
  };
  let frame = 0;
  canvas.addEventListener("pointermove", (event) => {
    const box = canvas.getBoundingClientRect();
    const place = (offset, length) => Math.floor((offset / length) * order.length);
    cancelAnimationFrame(frame);
    const [row, column] = [place(event.clientY - box.top, box.height), place(event.clientX - box.left, box.width)];
    frame = requestAnimationFrame(() => point(row, column));
  });
  canvas.addEventListener("pointerleave", () => { cancelAnimationFrame(frame); hideTip(); });
  canvas.addEventListener("blur", hideTip);
  canvas.addEventListener("keydown", (event) => {
    const moves = {ArrowLeft: [0, -1], ArrowRight: [0, 1], ArrowUp: [-1, 0], ArrowDown: [1, 0]};
    if (!moves[event.key]) return;
    event.preventDefault();
    point(map.row + moves[event.key][0], map.column + moves[event.key][1]);
  });
  paintMap(canvas, map);
  const table = el("details", {}, el("summary", {}, "The distances as a table"));
  table.addEventListener("toggle", () => {
    if (table.childElementCount > 1) return;
    table.append(
        el("div", {class: "scroller"},
           plainTable(
               "Distances", ["Motif", ...order.map((motif) => motif.name)],
               order.map(
                   (one) =>
                       [one.name,
                        ...order.map(
                            (other) => shortNumber(distanceBetween(tree.distances, one.number, other.number)))]))));
  });
  replaceChildren(
      area, el("h3", {}, "Distances in the order of the tree"), mapLegend(map.scale),
      map.blocks.length > 0 && el("p", {class: "muted small"}, "Framed: families of more than one motif."), words,
      el("div", {class: "heat-frame"}, canvas, tip),
      order.length <= MOST_IN_TABLE && table);
}
