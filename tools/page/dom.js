// Small helpers for building the page. Texts become text nodes, so no name can turn into markup.
"use strict";

const SVG = "http://www.w3.org/2000/svg";

function byId(id) {
  return document.getElementById(id);
}

// Adds texts and elements; leaves out null and false.
function append(node, children) {
  for (const child of children.flat(Infinity)) {
    if (child === null || child === undefined || child === false) continue;
    node.append(child);
  }
  return node;
}

function setAttributes(node, attributes) {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === null || value === undefined || value === false) continue;
    if (typeof value === "function") node.addEventListener(name, value);
    else node.setAttribute(name, value === true ? "" : value);
  }
  return node;
}

// An element with attributes (a function is a listener) and children.
function el(tag, attributes = {}, ...children) {
  return append(setAttributes(document.createElement(tag), attributes), children);
}

function svgEl(tag, attributes = {}, ...children) {
  return append(setAttributes(document.createElementNS(SVG, tag), attributes), children);
}

function replaceChildren(node, ...children) {
  node.textContent = "";
  return append(node, children);
}

// Pairs of name and value as a list of terms.
function termList(pairs, className) {
  return el("dl", {class: className}, pairs.map(([term, value]) => [el("dt", {}, term), el("dd", {}, value)]));
}

// Says for a moment what was done; screen readers read it out.
let messageTimer = 0;
function say(text) {
  const box = byId("message");
  box.textContent = text;
  box.hidden = false;
  clearTimeout(messageTimer);
  messageTimer = setTimeout(() => { box.hidden = true; }, 4000);
}

function downloadText(fileName, text, type = "text/plain") {
  const url = URL.createObjectURL(new Blob([text], {type: `${type};charset=utf-8`}));
  const link = el("a", {href: url, download: fileName});
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(url), 10000);
  say(`${fileName} is being saved.`);
}

// Browsers without a clipboard for pages from a file get the old way, by selection.
async function copyText(text, what) {
  try {
    await navigator.clipboard.writeText(text);
  } catch {
    const area = el("textarea", {class: "offscreen", readonly: true, "aria-hidden": "true"});
    area.value = text;
    (document.querySelector("dialog[open]") || document.body).append(area);
    area.select();
    const isCopied = document.execCommand("copy");
    area.remove();
    if (!isCopied) {
      say("The browser does not allow copying here. Download the table instead.");
      return;
    }
  }
  say(`${what} copied.`);
}

// Calls `draw` once, when the node comes near the window or the page is printed.
const undrawn = new Map();
const nearObserver = new IntersectionObserver((entries) => {
  for (const entry of entries) if (entry.isIntersecting) drawNow(entry.target);
}, {rootMargin: "600px"});

function drawNow(node) {
  const draw = undrawn.get(node);
  if (!draw) return;
  undrawn.delete(node);
  nearObserver.unobserve(node);
  draw(node);
}

function whenNear(node, draw) {
  undrawn.set(node, draw);
  nearObserver.observe(node);
  return node;
}

function drawAllNow() {
  for (const node of [...undrawn.keys()]) if (node.isConnected) drawNow(node);
}

function later(action, milliseconds) {
  let timer = 0;
  return () => {
    clearTimeout(timer);
    timer = setTimeout(action, milliseconds);
  };
}

function counted(count, noun, plural = `${noun}s`) {
  return `${count.toLocaleString("en")} ${count === 1 ? noun : plural}`;
}
