// Loaded after marked, which finds formulas with this extension where it reads text, so not in code, link targets or tags.
// Each comes in an element of class "tessaly-formula", as it was written, for the typesetter. A page that passes
// "formulaImage" (a function of the TeX and whether it is displayed) gets what that returns for $…$ and $$…$$ instead.
{
  const { Lexer, Tokenizer } = marked;

  // Prices are no formulas: no dollar opens one after a letter or digit, or closes one before a digit. Chinese characters
  // do not count as letters, because Chinese has no spaces between words.
  const word = String.raw`\p{Lu}\p{Ll}\p{Lt}\p{Nd}`;
  const address = String.raw`(?:https?:\/\/|www\.)`;
  const braces = content => String.raw`\{(?:[^{}\n]|${content})*\}`;
  const group = braces(braces(braces(braces("(?!)"))));
  const displayed = String.raw`\$\$(?!\$)[^]+?\$\$|\\begin\{(?<name>[a-zA-Z]+\*?)\}[^]{0,9999}?\\end\{\k<name>\}`;
  const formula = new RegExp([
    displayed,
    String.raw`(?<![${word}]|${address}\S{0,200})\$(?![\s$])(?:(?!${address}|\]\()[^$\n{}]|${group})+(?<!\s)\$(?!\p{Nd})`,
    String.raw`(?<![${word}\]])\\\[(?<square>(?:(?!\\\[)[^])+?)\\\](?!\\?[([]|:)`,
    String.raw`(?<![${word}\]_])\\\((?<round>(?:(?!\\\()[^])+?)\\\)`,
    String.raw`\\(?:eq)?ref\{[^{}\n]*\}`,
  ].join("|"), "gu");
  const mayHoldFormula = /\$|\\[([a-z]/;
  const tag = "\uFFFF"; // Stands for each character of a tag.

  // Brackets may be escaped so as not to make a link, as in \[1\], \[sic\] or \(see above\).
  const isEscaped = ({ index, input, groups: { square, round } }, end) => {
    const content = square ?? round;
    if (!content || /\\[a-zA-Z]|[\^_]/.test(content)) return false;
    if (round) return /\p{L}{2,}[\s,]+\p{L}{2,}/u.test(round);
    const isProse = /^[\p{L}\p{N}\s.,;:!?'"()–—-]*$/u.test(square) && !/^\s*\p{L}\s*$/u.test(square);
    const before = input.slice(input.lastIndexOf("\n", index - 1) + 1, index);
    const [after] = input.slice(end).split("\n", 1);
    return isProse || !/^\s*$/.test(before) || !/^\s*[.,;]?\s*$/.test(after);
  };
  const formulasIn = text => {
    const found = [];
    if (!mayHoldFormula.test(text)) return found;
    const unescaped = text.replace(/\\[^a-zA-Z()[\]]/g, "++");
    formula.lastIndex = 0;
    for (let match = formula.exec(unescaped); match; match = formula.exec(unescaped)) {
      const end = formula.lastIndex;
      if (isEscaped(match, end)) formula.lastIndex = match.index + 2;
      else if (!match[0].includes(tag)) found.push({ start: match.index, end });
    }
    return found;
  };

  const rendered = (text, html, { formulaImage }) => {
    if (!formulaImage) return `<span class="tessaly-formula">${html}</span>`;
    const [, signs, tex] = /^(\$\$?)([^]+)\1$/.exec(text) ?? [];
    return signs ? formulaImage(tex, signs === "$$") : html;
  };
  const markup = new RegExp([
    String.raw`<(pre|code|kbd|script|style|textarea|title)(?![-\w])[^]*?<\/\1\s*>`,
    "<!--[^]*?-->",
    String.raw`<\/?[a-z](?:"[^"]*"|'[^']*'|[^"'>])*>`,
  ].join("|"), "gi");
  const renderedHtml = (html, options) => {
    let result = "";
    let copied = 0;
    for (const { start, end } of formulasIn(html.replace(markup, whole => tag.repeat(whole.length)))) {
      const text = html.slice(start, end);
      result += html.slice(copied, start) + rendered(text, text, options);
      copied = end;
    }
    return result + html.slice(copied);
  };

  // The text that marked is reading, the formulas in it, and the number of those that it has reached.
  let reading = null;
  const { inlineTokens } = Lexer.prototype;
  Lexer.prototype.inlineTokens = function (text, tokens) {
    const outer = reading;
    reading = { text, formulas: [], reached: 0 };
    try {
      return inlineTokens.call(this, text, tokens);
    } finally {
      reading = outer;
    }
  };
  // marked asks what to skip when it looks for emphasis. It has masked code, links and tags, and escapes with "+".
  const emStrongMask = masked => {
    reading.formulas = formulasIn(masked.replace(/\+/g, (sign, at) => reading.text[at]));
    let result = "";
    for (const { start, end } of reading.formulas)
      result += masked.slice(result.length, start) + "a".repeat(end - start);
    return result + masked.slice(result.length);
  };
  const distanceToFormula = rest => {
    const { text, formulas } = reading;
    const at = text.length - rest.length;
    while (formulas[reading.reached]?.start < at) ++reading.reached;
    return reading.reached < formulas.length ? formulas[reading.reached].start - at : undefined;
  };

  // A displayed formula goes on over lines that would begin a list or a heading: to the rules of blocks it is one line.
  const codeOrDisplayed =
    new RegExp(String.raw`((\`+)(?!\`)[^]*?[^\`]\2(?!\`)|\\[^a-zA-Z[])|\\\[(?:(?!\\\[)[^])+?\\\]|${displayed}`, "g");
  for (const rule of ["lheading", "paragraph", "text"]) {
    const tokenize = Tokenizer.prototype[rule];
    Tokenizer.prototype[rule] = function (source) {
      const [text] = source.split(/\n[ \t]*\n/, 1);
      const line = text.replace(codeOrDisplayed, (whole, other) => other ? whole : whole.replaceAll("\n", "\r"));
      const token = tokenize.call(this, line === text ? source : line);
      if (token && line !== text) {
        token.raw = token.raw.replaceAll("\r", "\n");
        token.text = token.text.replaceAll("\r", "\n");
        this.lexer.inlineQueue.at(-1).src = token.text;
      }
      return token;
    };
  }

  marked.use({
    extensions: [{
      name: "formula",
      level: "inline",
      start: distanceToFormula,
      tokenizer(rest) {
        if (this.lexer.state.inRawBlock || distanceToFormula(rest) !== 0) return undefined;
        const { start, end } = reading.formulas[reading.reached];
        const text = rest.slice(0, end - start);
        // A displayed formula ends its line anyway.
        const [space] = /^(?:\$\$|\\\[|\\begin)/.test(text) ? /^[ \t]*\n?/.exec(rest.slice(text.length)) : [""];
        return { type: "formula", raw: text + space, text };
      },
      renderer({ text }) {
        const html = text.replaceAll("&", "&amp;").replaceAll("<", "&lt;");
        return rendered(text, html, this.parser.options);
      },
    }],
    hooks: { emStrongMask },
    renderer: {
      html({ block, text }) {
        return block ? renderedHtml(text, this.options) : text;
      },
    },
    // The text in place of a picture is plain.
    walkTokens({ type, tokens }) {
      if (type !== "image") return;
      marked.walkTokens(tokens, token => {
        if (token.type === "formula") token.type = "text";
      });
    },
  });
}
