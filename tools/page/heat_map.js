// The distance table as a map, in the order of the tree. Near pairs are dark.
"use strict";

const MAP_SIZE = 560;  // pixels, about
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

// Pairs without a match have the largest distance, which lies far above the others.
function distanceScale(distances) {
  const all = distances.flat().filter((value) => value !== null);
  const largest = all.reduce((most, value) => Math.max(most, value), 0);
  const next = all.reduce((most, value) => (value < largest ? Math.max(most, value) : most), 0);
  return {largest, next: next || largest || 1};
}

function pairWords(map, row, column) {
  const [one, other] = [map.order[row], map.order[column]];
  if (one === other) return `${one.name}: the same motif`;
  const distance = distanceBetween(map.distances, one.number, other.number);
  const match = similarityOfPairs(one.number, other.number);
  const isFar = distance === map.scale.largest && !match;
  return `${one.name} and ${other.name}: distance ${shortNumber(distance)}` + (isFar ? " (no match)" : "") +
    (match ? `, best similarity ${shortNumber(match.similarity)} over ${counted(match.overlap, "column")}` : "");
}

function paintMap(canvas, map) {
  const context = canvas.getContext("2d");
  const size = map.order.length;
  const cell = map.cell;
  const image = context.createImageData(size * cell, size * cell);
  map.order.forEach((one, row) => map.order.forEach((other, column) => {
    const distance = distanceBetween(map.distances, one.number, other.number);
    const isFar = distance === null || (distance === map.scale.largest && distance > map.scale.next);
    const [red, green, blue] = isFar ? [255, 255, 255] : nearColour(distance / map.scale.next);
    for (let y = 0; y < cell; ++y) {
      for (let x = 0; x < cell; ++x) {
        image.data.set([red, green, blue, 255], ((row * cell + y) * size * cell + column * cell + x) * 4);
      }
    }
  }));
  context.putImageData(image, 0, 0);
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
        el("p", {class: "muted"},
           `The heat map is left out for more than ${
               MOST_WITH_LOGOS} motifs; the distances are in the table of the job.`));
    return;
  }
  const order = mapOrder(tree.newick);
  const cell = Math.max(1, Math.min(22, Math.floor(MAP_SIZE / order.length)));
  const map = {order, cell, distances: tree.distances, scale: distanceScale(tree.distances), row: 0, column: 0};
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
    const context = canvas.getContext("2d");
    context.strokeStyle = "#c2410c";
    context.lineWidth = 2;
    context.strokeRect(map.column * cell - 1, map.row * cell - 1, cell + 2, cell + 2);
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
      area, el("h3", {}, "Distances in the order of the tree"), mapLegend(map.scale), words,
      el("div", {class: "heat-frame"}, canvas, tip), table);
}
