// The tree of tree.nwk, drawn by D3 as a rectangle or a circle.
"use strict";

const MOST_WITH_LOGOS = 500;  // motifs; a larger tree is drawn without logos
const LEAF = {height: 30, logoHeight: 22, logoColumn: 8, gap: 8, letter: 7};

// A Newick text as {name, length, children}. A quote within a quoted name is doubled.
function parseNewick(text) {
  let place = 0;
  const readName = () => {
    let name = "";
    if (text[place] === "'") {
      for (++place; place < text.length; ++place) {
        if (text[place] === "'" && text[++place] !== "'") break;
        name += text[place];
      }
      return name;
    }
    while (place < text.length && !"(),:;".includes(text[place])) name += text[place++];
    return name.trim();
  };
  const readNode = () => {
    const node = {name: "", length: 0, children: []};
    if (text[place] === "(") {
      do {
        ++place;
        node.children.push(readNode());
      } while (text[place] === ",");
      ++place;
    }
    node.name = readName();
    if (text[place] === ":") {
      ++place;
      node.length = Number(readName()) || 0;
    }
    return node;
  };
  return readNode();
}

// Leaves are named by a letter, the number of the motif and its name.
function motifOfLeaf(name) {
  const number = /^[A-Z](\d+)_/.exec(name);
  return number ? motifByNumber.get(Number(number[1])) : undefined;
}

// The family that all the nodes are of, if there is one.
function commonFamily(nodes) {
  return nodes.every((node) => node.family === nodes[0].family) ? nodes[0].family : undefined;
}

// The lines from the parents to their children: those within families by themselves, as they are drawn thicker.
function branchPaths(root, linkOf) {
  const paths = {between: [], within: []};
  root.each((node) => {
    for (const child of node.children || []) paths[node.family ? "within" : "between"].push(linkOf(node, child));
  });
  return [
    svgEl("path", {class: "branches", d: paths.between.join(" ")}),
    paths.within.length > 0 && svgEl("path", {class: "branches within", d: paths.within.join(" ")}),
  ];
}

// The root with the place of each node: `depth` from the root, 0 to 1, and `order` of the leaves.
function placedTree(newick) {
  const root = d3.hierarchy(parseNewick(newick), (node) => (node.children.length > 0 ? node.children : null));
  root.eachBefore((node) => { node.distance = node.parent ? node.parent.distance + node.data.length : 0; });
  const leaves = root.leaves();
  leaves.forEach((leaf, place) => {
    leaf.order = place;
    leaf.motif = motifOfLeaf(leaf.data.name);
  });
  const deepest = Math.max(...leaves.map((leaf) => leaf.distance)) || 1;
  root.eachAfter((node) => {
    if (node.children) node.order = d3.mean(node.children, (child) => child.order);
    node.reach = node.distance / deepest;
    node.family = node.children ? commonFamily(node.children) : familyOf(node.motif);
  });
  return {root, leaves, deepest};
}

function treeLabel(leaf) {
  return leaf.motif ? leaf.motif.name : leaf.data.name;
}

function shortLabel(text) {
  return text.length > 28 ? `${text.slice(0, 27)}…` : text;
}

// Mark, name and logo of a leaf, from x = 0 to the right, or to the left if it is turned.
function leafGroup(leaf, hasLogo, isTurned) {
  const label = treeLabel(leaf);
  const side = isTurned ? -1 : 1;
  const group = svgEl("g", {});
  if (leaf.motif) {
    const mark = markPath(leaf.motif.dataset);
    mark.setAttribute("transform", `translate(${side * 10 - 6} -6)`);
    group.append(mark);
  }
  group.append(svgEl(
      "text", {x: side * 22, y: 4, class: "leaf-name", "text-anchor": isTurned ? "end" : "start"}, shortLabel(label)));
  if (hasLogo && leaf.motif) {
    const letters = logoLetters(leaf.motif.positions, LEAF.logoColumn, LEAF.logoHeight);
    const width = leaf.motif.positions.length * LEAF.logoColumn;
    const start = 30 + shortLabel(label).length * LEAF.letter;
    const plate = svgEl(
        "g", {transform: `translate(${isTurned ? -start - width : start} ${- LEAF.logoHeight / 2})`},
        svgEl("rect", {class: "leaf-plate", x: -2, y: -2, width: width + 4, height: LEAF.logoHeight + 4, rx: 2}),
        letters);
    group.append(plate);
  }
  if (!leaf.motif) return group;
  return svgEl("a", {href: leaf.motif.hash, class: "leaf", "aria-label": `${label}, ${leaf.motif.dataset}`},
    svgEl("title", {}, `${label} (${leaf.motif.dataset})${leaf.family ? `, ${leaf.family.name}` : ""}`), group);
}

function labelRoom(leaves, hasLogos) {
  return Math.max(...leaves.map((leaf) => 40 + shortLabel(treeLabel(leaf)).length * LEAF.letter +
    (hasLogos && leaf.motif ? leaf.motif.positions.length * LEAF.logoColumn + 8 : 0)));
}

function rectangularTree(tree, hasLogos, width) {
  const {root, leaves} = tree;
  const step = hasLogos ? LEAF.height : 14;
  const labels = labelRoom(leaves, hasLogos);
  const depth = Math.max(280, Math.min(1000, width - labels - 60));
  const x = (node) => node.reach * depth;
  const y = (node) => (node.order + 0.5) * step;
  const links = branchPaths(root, (node, child) =>
    `M ${x(node).toFixed(1)} ${y(node).toFixed(1)} V ${y(child).toFixed(1)} H ${x(child).toFixed(1)}`);
  const drawn = leaves.map((leaf) => {
    const group = leafGroup(leaf, hasLogos, false);
    const holder = svgEl("g", {transform: `translate(${x(leaf).toFixed(1)} ${y(leaf).toFixed(1)})`}, group);
    return holder;
  });
  leaves.forEach((leaf) => { leaf.point = [x(leaf) + labels / 2, y(leaf)]; });
  return {links, drawn, box: [-10, 0, depth + labels + 10, leaves.length * step]};
}

function circularTree(tree, hasLogos) {
  const {root, leaves} = tree;
  const step = hasLogos ? LEAF.height : 14;
  const radius = Math.max(140, (leaves.length * step) / (2 * Math.PI));
  const angle = (node) => ((node.order + 0.5) / leaves.length) * 2 * Math.PI;
  const point = (turn, reach) =>
      `${(Math.cos(turn) * reach * radius).toFixed(1)} ${(Math.sin(turn) * reach * radius).toFixed(1)}`;
  const links = branchPaths(root, (node, child) => {
    const [from, to] = [angle(node), angle(child)];
    const arc = (node.reach * radius).toFixed(1);
    return `M ${point(from, node.reach)} A ${arc} ${arc} 0 0 ${to > from ? 1 : 0} ${point(to, node.reach)} L ${
        point(to, child.reach)}`;
  });
  const drawn = leaves.map((leaf) => {
    const degrees = (angle(leaf) * 180) / Math.PI;
    const isTurned = degrees > 90 && degrees < 270;
    return svgEl(
        "g", {
          transform: `rotate(${degrees.toFixed(2)}) translate(${(leaf.reach * radius).toFixed(1)} 0)${
              isTurned ? " rotate(180)" : ""}`
        },
        leafGroup(leaf, hasLogos, isTurned));
  });
  leaves.forEach((leaf) => { leaf.point = point(angle(leaf), leaf.reach).split(" ").map(Number); });
  const room = radius + labelRoom(leaves, hasLogos);
  return {links, drawn, box: [-room, -room, 2 * room, 2 * room]};
}

// D3 up to version 5 has the event in a variable, later ones give it to the listener.
function zoomEvent(given) {
  return d3.event || given;
}

// Drag moves, Ctrl and the wheel zoom; keys do the same.
function addZoom(picture, content, box) {
  const view = d3.select(picture);
  const zoom = d3.zoom().scaleExtent([0.05, 12])
    .filter((given) => {
      const event = zoomEvent(given);
      return event.type === "wheel" ? event.ctrlKey || event.metaKey : !event.button;
    })
    .on("zoom", (given) => content.setAttribute("transform", zoomEvent(given).transform));
  view.call(zoom).on("dblclick.zoom", null);
  const fit = (isWhole) => {
    const {width, height} = picture.viewBox.baseVal;
    const [left, top, boxWidth, boxHeight] = box;
    const across = width / (boxWidth + 20);
    const scale = isWhole ? Math.min(across, height / (boxHeight + 20)) : Math.min(across, 1.1);
    const fromTop = isWhole ? (height - boxHeight * scale) / 2 - top * scale : 10 - top * scale;
    view.call(
        zoom.transform, d3.zoomIdentity.translate((width - boxWidth * scale) / 2 - left * scale, fromTop).scale(scale));
  };
  const moves = {ArrowLeft: [60, 0], ArrowRight: [-60, 0], ArrowUp: [0, 60], ArrowDown: [0, -60]};
  picture.addEventListener("keydown", (event) => {
    if (event.target !== picture) return;
    if (moves[event.key]) {
      const {k} = d3.zoomTransform(picture);
      view.call(zoom.translateBy, moves[event.key][0] / k, moves[event.key][1] / k);
    } else if (event.key === "+" || event.key === "=") {
      view.call(zoom.scaleBy, 1.3);
    } else if (event.key === "-") {
      view.call(zoom.scaleBy, 1 / 1.3);
    } else {
      return;
    }
    event.preventDefault();
  });
  // Brings a point into the middle, near enough to read.
  const showAt = ([x, y]) => {
    const {width, height} = picture.viewBox.baseVal;
    const scale = Math.max(1, d3.zoomTransform(picture).k);
    view.call(zoom.transform, d3.zoomIdentity.translate(width / 2 - x * scale, height / 2 - y * scale).scale(scale));
  };
  return {fit, showAt, scaleBy: (factor) => view.call(zoom.scaleBy, factor)};
}

let treeZoom = null;
let drawnLeaves = [];

function chosenTree() {
  return job.trees[Number(byId("tree-choice").value) || 0];
}

function drawTreePicture() {
  const area = byId("tree-drawing");
  const stored = chosenTree();
  treeZoom = null;
  if (!stored.newick) {
    replaceChildren(area, el("p", {class: "notice"}, "The tree could not be made; the notes above say why."));
    return;
  }
  if (!window.d3) {
    replaceChildren(area, el("p", {}, "The tree as Newick text:"), el("pre", {class: "newick"}, stored.newick));
    return;
  }
  const tree = placedTree(stored.newick);
  const hasLogos = tree.leaves.length <= MOST_WITH_LOGOS;
  const width = Math.max(320, area.clientWidth || 1000);
  const isCircular = document.querySelector("input[name=tree-shape]:checked").value === "circular";
  const drawing = isCircular ? circularTree(tree, hasLogos) : rectangularTree(tree, hasLogos, width);
  const tall = (drawing.box[3] * Math.min(1, width / (drawing.box[2] + 20))) + 20;
  const height = Math.round(isCircular ? Math.min(width, 760) : Math.min(Math.max(tall, 240), 760));
  const content = svgEl("g", {}, drawing.links, drawing.drawn);
  const picture = svgEl(
      "svg", {
        class: "tree-picture",
        viewBox: `0 0 ${width} ${height}`,
        width,
        height,
        tabindex: "0",
        role: "group",
        "aria-label": `Tree of ${
            counted(
                tree.leaves.length,
                "motif")}. Arrow keys move it, plus and minus zoom; each leaf is a link to its motif.`
      },
      content);
  replaceChildren(area, picture, el("p", {class: "muted small"},
    "Drag to move; Ctrl and the wheel, or the buttons, zoom. A leaf leads to its motif. " +
    `From the root to the farthest leaf: ${shortNumber(tree.deepest)}.` +
    (hasLogos ? "" : ` Trees of more than ${MOST_WITH_LOGOS} motifs are drawn without logos.`)));
  treeZoom = addZoom(picture, content, drawing.box);
  drawnLeaves = tree.leaves.map((leaf, place) => ({motif: leaf.motif, point: leaf.point, node: drawing.drawn[place]}));
  treeZoom.fit(isCircular || drawing.box[3] < height * 1.5);
}

function canShowInTree(motif) {
  return !motif.isReference && window.d3 && job.trees.some((tree) => tree.newick);
}

// Moves the tree to the leaf of a motif and marks it.
function showInTree(motif) {
  drawNow(byId("tree-drawing"));
  const leaf = drawnLeaves.find((drawn) => drawn.motif === motif);
  if (!leaf || !treeZoom) return;
  for (const drawn of drawnLeaves) drawn.node.classList.toggle("found", drawn === leaf);
  treeZoom.showAt(leaf.point);
  byId("tree").scrollIntoView();
  leaf.node.querySelector("a").focus({preventScroll: true});
}

function drawTreeLegend() {
  replaceChildren(byId("tree-legend"), datasetNames.map((name) => el("span", {}, datasetMark(name), ` ${name}`)));
}

function drawTree() {
  if (job.trees.length === 0) return;
  byId("tree").hidden = false;
  append(byId("tree-choice"), job.trees.map((tree, place) => el("option", {value: place}, tree.name)));
  drawTreeLegend();
  const draw = () => {
    drawTreePicture();
    drawHeatMap(chosenTree());
  };
  byId("tree-choice").addEventListener("change", draw);
  for (const choice of document.querySelectorAll("input[name=tree-shape]"))
    choice.addEventListener("change", drawTreePicture);
  byId("tree-in").addEventListener("click", () => treeZoom && treeZoom.scaleBy(1.4));
  byId("tree-out").addEventListener("click", () => treeZoom && treeZoom.scaleBy(1 / 1.4));
  byId("tree-whole").addEventListener("click", () => treeZoom && treeZoom.fit(true));
  whenNear(byId("tree-drawing"), draw);
}
