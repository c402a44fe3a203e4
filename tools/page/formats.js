// How numbers, tables and motifs are written: for reading, and for other programs.
"use strict";

const BASES = ["A", "C", "G", "T"];

// The shortest text that reads back as the same number, as matches.tsv has it: the shorter one of plain and scientific
// notation, and the plain one if both are as long.
function exactNumber(number) {
  if (Number.isInteger(number)) return String(number);
  const [digits, power] = number.toExponential().split("e");
  const exponent = Math.abs(Number(power));
  const scientific = `${digits}e${power[0]}${exponent < 10 ? "0" : ""}${exponent}`;
  return [plainNumber(number), scientific].sort((one, other) => one.length - other.length)[0];
}

// The number without an exponent.
function plainNumber(number) {
  const [head, power] = number.toExponential().split("e");
  const sign = head[0] === "-" ? "-" : "";
  const digits = head.replace(/[-.]/g, "");
  const point = Number(power) + 1;
  if (point <= 0) return `${sign}0.${"0".repeat(-point)}${digits}`;
  if (point >= digits.length) return sign + digits + "0".repeat(point - digits.length);
  return `${sign}${digits.slice(0, point)}.${digits.slice(point)}`;
}

// For reading: four digits behind the point, small ones with an exponent.
function shortNumber(number) {
  if (number === null || number === undefined) return "";
  if (Number.isInteger(number)) return String(number);
  if (Math.abs(number) < 0.001) return number.toExponential(1);
  return number.toFixed(4);
}

function tsvCell(value) {
  if (value === null || value === undefined) return "";
  if (typeof value === "number") return exactNumber(value);
  // eslint-disable-next-line no-control-regex
  return value.replace(/[\x00-\x1f\x7f]/g, " ");
}

// A name as one word, for files in which a blank ends it.
function oneWord(text) {
  // eslint-disable-next-line no-control-regex
  return text.replace(/[\x00-\x20\x7f]+/g, "_") || "motif";
}

function fileNameOf(text, extension) {
  return `${text.replace(/[^A-Za-z0-9._-]+/g, "_").slice(0, 80) || "motif"}.${extension}`;
}

const MEME_HEAD = "MEME version 4\n\nALPHABET= ACGT\n\nstrands: + -\n\nBackground letter frequencies\n" +
  "A 0.25 C 0.25 G 0.25 T 0.25\n\n";

const ASSUMED_SITES = 20;  // what MEME assumes where no number is given

// Motifs are {id, name, positions}.
function memeText(motifs) {
  return MEME_HEAD + motifs.map((motif) =>
    `MOTIF ${oneWord(motif.id)} ${oneWord(motif.name || motif.id)}\n` +
    `letter-probability matrix: alength= 4 w= ${motif.positions.length} nsites= ${ASSUMED_SITES} E= 0\n` +
    motif.positions.map((values) => {
      const sum = values.reduce((total, value) => total + value, 0);
      const isShare = sum === 0 || Math.abs(sum - 1) < 1e-9;
      return ` ${values.map((value) => plainNumber(isShare ? value : value / sum)).join(" ")}\n`;
    }).join("")).join("\n") + "\n";
}

function jasparText(motifs) {
  return motifs.map((motif) => {
    const texts = motif.positions.map((values) => values.map(plainNumber));
    const widths = texts.map((values) => Math.max(...values.map((text) => text.length)));
    return `>${oneWord(motif.id)} ${oneWord(motif.name || motif.id)}\n` + BASES.map((letter, base) =>
      `${letter} [ ${texts.map((values, place) => values[base].padStart(widths[place])).join(" ")} ]\n`).join("");
  }).join("\n") + "\n";
}
