"use strict";
const assert = require("node:assert/strict");
const test = require("node:test");
const { markedWith, options } = require("./page.js");

const marked = markedWith("marked-formulas.js", "marked-raw-html.js");
const element = /<span class="tessaly-formula">([^]*?)<\/span>/g;
const unescaped = html => html.replaceAll("&lt;", "<").replaceAll("&amp;", "&").replaceAll("&gt;", ">");
const formulasIn = markdown => [...marked.parse(markdown, options).matchAll(element)].map(([, text]) => unescaped(text));
const textOf = markdown => unescaped(marked.parse(markdown, options).replace(element, "").replace(/<[^>]*>/g, " "));

test("a formula reaches the typesetter as it was written", async context => {
  const rows = {
    "row breaks, braces, thin spaces": ["$\\{a\\,b\\}$ $$a \\\\ b$$", ["$\\{a\\,b\\}$", "$$a \\\\ b$$"]],
    "what Markdown would take for its own": ["$a_1 b_2$ $a*b*c$ $`a`$ $~a~$ $\\&amp;$", ["$a_1 b_2$", "$a*b*c$", "$`a`$", "$~a~$", "$\\&amp;$"]],
    "less-than and ampersand": ["$a<b$ $a & b$", ["$a<b$", "$a & b$"]],
    "an address": ["$\\href{https://d.e}{www.f.g} a@b.c$", ["$\\href{https://d.e}{www.f.g} a@b.c$"]],
    "the four delimiters": ["$a$ \\(b\\)\n\n$$c$$\n\n\\[d\\]", ["$a$", "\\(b\\)", "$$c$$", "\\[d\\]"]],
    "an environment": ["\\begin{align}\na &= b \\\\\n- c\n\\end{align}", ["\\begin{align}\na &= b \\\\\n- c\n\\end{align}"]],
    "lines that would begin other blocks": ["a $$\n+ b\n1. c\n# d\n> e\n=\n$$ f", ["$$\n+ b\n1. c\n# d\n> e\n=\n$$"]],
    "in a list": ["- a\n\n  $$\n  a\n  - b\n  $$\n- $$\n  + c\n  $$", ["$$\na\n- b\n$$", "$$\n+ c\n$$"]],
    "in a quote in a list": ["1. > $$\n   > a\n   > - b\n   > $$", ["$$\na\n- b\n$$"]],
    "in emphasis, a link, a heading": ["# **a $x_1$** [$y_2$](z)", ["$x_1$", "$y_2$"]],
    "a cell's bar": ["| a |\n| - |\n| $P(A\\|B)$ |", ["$P(A|B)$"]],
    "between tags": ["<b>$a_1$</b>\n\n<div>\n$b_1 c_2$ \\(d\\)\n</div>", ["$a_1$", "$b_1 c_2$", "\\(d\\)"]],
    "dollars within": ["$\\text{if $x$, \\$5}$ $a\\$b$", ["$\\text{if $x$, \\$5}$", "$a\\$b$"]],
    "side by side": ["$x$$y$", ["$x$", "$y$"]],
    "next to Chinese": ["质量$m$的,能量\\(E\\)的", ["$m$", "\\(E\\)"]],
    "before a suffix": ["the $n$th", ["$n$"]],
    "brackets of a formula within a link": ["[$f[a](x)$](y)", ["$f[a](x)$"]],
  };
  for (const [name, [markdown, expected]] of Object.entries(rows))
    await context.test(name, () => assert.deepEqual(formulasIn(markdown), expected));
});

test("what is no formula stays text", async context => {
  const rows = {
    "two prices": ["costs $5 or $6", "costs $5 or $6"],
    "a number of prices": ["$5, $6.50 and US$7", "$5, $6.50 and US$7"],
    "blanks inside": ["$ a$ and $b $", "$ a$ and $b $"],
    "over lines": ["$a\n$b", "$a"],
    "escaped": ["\\$a$ \\$5", "$a$ $5"],
    "code": ["`$a$`", "$a$"],
    "the target of a link": ["[a]($b$ \"$c$\")", "a"],
    "an address": ["https://a.org/$b$/c", "https://a.org/$b$/c"],
    "a footnote": ["see \\[1\\]", "see [1]"],
    "a number alone": ["\\[1\\]", "[1]"],
    "words": ["\\[sic\\]", "[sic]"],
    "a check box": ["\\[x\\] done", "[x] done"],
    "an index": ["a\\[i+1\\]", "a[i+1]"],
    "what would be a link": ["\\[a\\]\\(b\\)", "[a](b)"],
    "brackets of a name": ["Rust_\\(programming_language\\)", "Rust_(programming_language)"],
    "four dollars": ["$$$$ a", "$$$$ a"],
    "over a blank line": ["$$a\n\nb$$", "$$a"],
  };
  for (const [name, [markdown, expected]] of Object.entries(rows)) {
    await context.test(name, () => {
      assert.deepEqual(formulasIn(markdown), []);
      assert.ok(textOf(markdown).includes(expected), textOf(markdown));
    });
  }
});

test("what stands between two prices keeps its meaning", () => {
  for (const markup of ["**a**", "`a`", "~~a~~", "[a](b)", "*a*", "<b>a</b>", "![a](b)"]) {
    for (const [before, after] of [["$5", "$6"], ["5$", "6$"], ["US$5", "US$6"]]) {
      const plain = marked.parse(markup, options).trim();
      const html = marked.parse(`${before} ${markup} ${after}`, options).trim();
      assert.equal(html, plain.replace("<p>", `<p>${before} `).replace("</p>", ` ${after}</p>`));
    }
  }
});

test("prices keep the cells of a table", () => {
  const html = marked.parse("| a | b | c | d |\n| - | - | - | - |\n| Pro | $10 | $100 | five |", options);
  assert.deepEqual([...html.matchAll(/<td>(.*?)<\/td>/g)].map(([, text]) => text), ["Pro", "$10", "$100", "five"]);
});

test("attributes, links and code keep their dollars", () => {
  const html = marked.parse("<b title='$a$'>c</b> [d](https://e/Rust_\\(f\\) '$g$') ![$h_1$](i)\n\n<pre>\n$j$\n</pre>", options);
  for (const part of ["title='$a$'", "href=\"https://e/Rust_(f)\"", "title=\"$g$\"", "alt=\"$h_1$\"", "<pre>\n$j$"])
    assert.ok(html.includes(part), html);
});

/// The page for copying, with dollars' formulas as [inline] and [[displayed]] images.
const copied = markdown =>
  marked.parse(markdown, { ...options, formulaImage: (tex, isDisplayed) => isDisplayed ? `[[${tex}]]` : `[${tex}]` }).trim();

test("a copy holds images of the formulas between dollars", async context => {
  const rows = {
    "prices": ["$a$ costs $5 and $6", "<p>[a] costs $5 and $6</p>"],
    "code": ["`$a$` $b$", "<p><code>$a$</code> [b]</p>"],
    "escaped": ["\\$a$ $b$", "<p>$a$ [b]</p>"],
    "dollars of a formula": ["$\\text{$x$}\\$$", "<p>[\\text{$x$}\\$]</p>"],
    "side by side": ["$x$$y$ $$z$$", "<p>[x][y] [[z]]</p>"],
    "in a quote": ["> $$\n> a<b\n> $$", "<blockquote>\n<p>[[\na<b\n]]</p>\n</blockquote>"],
    "other delimiters": ["\\(a<\\text{$b$}\\) $c$", "<p>\\(a&lt;\\text{$b$}\\) [c]</p>"],
    "raw HTML": ["<div title=\"$a$\">\n$b$ \\(c\\)\n</div>", "<div title=\"$a$\">\n[b] \\(c\\)\n</div>"],
  };
  for (const [name, [markdown, expected]] of Object.entries(rows))
    await context.test(name, () => assert.equal(copied(markdown), expected));
});

/// Texts of nested blocks, with the formulas and prices that they hold.
class Texts {
  constructor(seed) {
    this.seed = seed;
    this.state = seed;
    this.formulas = [];
    this.prices = [];
  }

  below(limit) { // As in Numerical Recipes.
    this.state = (Math.imul(this.state, 1664525) + 1013904223) >>> 0;
    return Math.floor(this.state / 2 ** 32 * limit);
  }

  one(choices) {
    return choices[this.below(choices.length)];
  }

  word() {
    return this.one(["and", "des mots", "中文", "x", "3", "a_b", "\\*", "&amp;", "`$c$`", "`` a$ ``", "<br>", "www.a.org/$b"]);
  }

  /// Within a "cell" of a table, a "line" or a "paragraph".
  formula(place) {
    const id = this.formulas.length;
    const body = this.one([`x_{${id}} * y_1 * z_2`, `\\{a_${id}\\,b_${id}\\}`, `a<b_${id}>c & d`, `\\text{$p_${id}$}`, `~a_${id}~`,
      `${id} + \\&`, `[a_${id}](b)`, `\`a_${id}\``, `**a**_${id}`, place === "cell" ? `a_${id}\\|b` : `a_${id}|b`, `f_${id}\\$`]);
    const display = this.one(["$$", "$$\n"]);
    const [open, close] = this.one([["$", "$"], ["$", "$"], ["\\(", "\\)"],
      place !== "paragraph" || display === "$$" ? ["$$", "$$"] : [`${display}- `, "\n+ b\n$$"]]);
    this.formulas.push((open + body + close).replaceAll("\\|", place === "cell" ? "|" : "\\|"));
    return open + body + close;
  }

  price() {
    // Nobody writes the dollar in front and behind.
    const price = this.one(this.seed % 4 ? ["$10", "US$5", "$1,000.50", "$3k", "\\$4"] : ["7$", "1,000$", "\\$4"]);
    this.prices.push(price.replace("\\", ""));
    return price;
  }

  inline(place, depth = 2) {
    const parts = [];
    for (let count = 1 + this.below(4); count > 0; --count) {
      const kind = this.below(depth > 0 ? 7 : 4);
      if (kind < 2) parts.push(this.word());
      else if (kind === 2) parts.push(this.formula(place));
      else if (kind === 3) parts.push(this.one(["a", "an"]), this.price(), this.one(["to", "per"]));
      else if (kind === 4) parts.push(`**b ${this.inline(place, depth - 1)} b**`);
      else if (kind === 5) parts.push(`~~b ${this.inline(place, depth - 1)} b~~`);
      else parts.push(`[l ${this.inline(place, 0)} l](t/$u$ "$v$")`);
    }
    return parts.join(" ");
  }

  table() {
    const cells = () => `| ${this.inline("cell")} | ${this.inline("cell")} |\n`;
    return `${cells()}| - | - |\n${cells()}${cells()}`;
  }

  block(depth) {
    const kind = this.below(depth > 0 ? 7 : 3);
    const indented = (first, rest) => this.blocks(depth - 1).split("\n").map((line, index) => (index ? rest : first) + line).join("\n");
    if (kind === 0) return `## ${this.inline("line")}`;
    if (kind === 1) return this.table();
    if (kind === 2) return this.one(["```\n$c$\n```", "<!-- $c$ -->"]);
    if (kind === 3) return indented("> ", "> ");
    if (kind === 4) return indented("- ", "  ");
    if (kind === 5) return indented("1. ", "   ");
    return `w ${this.inline("paragraph")}`;
  }

  blocks(depth) {
    return Array.from({ length: 1 + this.below(3) }, () => this.block(depth)).join("\n\n");
  }
}

test("in nested texts no formula is lost and no price taken for one", () => {
  let count = 0;
  for (let seed = 1; seed <= 1200; ++seed) {
    const texts = new Texts(seed);
    const markdown = texts.blocks(3);
    const html = marked.parse(markdown, options);
    assert.deepEqual(formulasIn(markdown).sort(), texts.formulas.sort(), markdown);
    const text = unescaped(html.replace(element, ""));
    for (const price of texts.prices) assert.ok(text.includes(price), `${price} in\n${markdown}\n${text}`);
    count += texts.formulas.length;
  }
  assert.ok(count > 5000, `${count}`);
});
