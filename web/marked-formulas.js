// Served behind marked. Formulas stand aside while it parses, found where it reads text: not in code, link targets or the
// attributes of HTML. Each comes back in an element of class "tessaly-formula", which the typesetter looks into.
{
  const { Lexer, Tokenizer } = marked;
  const parse = marked.parse;
  // No text holds noncharacters. These enclose the number of a formula while it stands aside …
  const aside = /\uFDD2(\d+)\uFDD3/g;
  // … these stand for a dollar of no formula, one within a formula, for nothing, and for "<" (marked-raw-html.js) …
  const [plainDollar, innerDollar, nothing, lessThan] = ["\uFDD1", "\uFDD5", "\uFDD4", "\uFDD0"];
  // … and these number a dollar: "$", hexadecimal digits, "$".
  const dollar = "(?:\\$[\\uFDE0-\\uFDEF]+\\$|(?<![\\uFDE0-\\uFDEF])\\$(?![\\uFDE0-\\uFDEF]))";
  const digits = number => [...number.toString(16)].map(digit => String.fromCharCode(0xFDE0 + parseInt(digit, 16))).join("");
  const numbersIn = text => [...text.matchAll(/\$([\uFDE0-\uFDEF]+)\$/g)]
    .map(([, code]) => parseInt([...code].map(digit => (digit.charCodeAt(0) - 0xFDE0).toString(16)).join(""), 16));

  const blankLine = "\\n[ \\t]*\\n";
  const between = (open, close, content) =>
    new RegExp(`${open}((?:(?!${blankLine}|${close})(?:${content}))+)${close}`, "uy");
  const oneDollar = new RegExp(dollar, "y");
  const displays = [
    between(`(?:${dollar}){2}`, `(?:${dollar}){2}`, "\\\\[^]|[^\\\\]"),
    between("\\\\\\[", "\\\\\\]", "(?!\\\\\\[)[^]"),
    /\\begin\{([a-zA-Z]+\*?)\}(?:(?!\n[ \t]*\n)[^]){0,9999}?\\end\{\1\}/y,
  ];
  const round = between("\\\\\\(", "\\\\\\)", "(?!\\\\\\()[^]");
  const reference = /\\(?:eq)?ref\{[^{}\n]*\}/y;
  const mayHoldFormula = /\$|\\[([]|\\(?:begin|ref|eqref)\{/;
  const mayHoldDisplay = /\$[\uFDE0-\uFDEF$]|\\\[|\\begin\{/;

  const matchAt = (pattern, text, at) => {
    pattern.lastIndex = at;
    return pattern.exec(text);
  };
  const dollarLength = (text, at) => matchAt(oneDollar, text, at)?.[0].length ?? 1;
  const lineAround = (text, start, end) => {
    const lineEnd = text.indexOf("\n", end);
    return [text.slice(text.lastIndexOf("\n", start - 1) + 1, start), text.slice(end, lineEnd < 0 ? undefined : lineEnd)];
  };
  // Letters that words are made of with blanks between them; before a Chinese formula there is none.
  const endsWord = before => /[\p{Lu}\p{Ll}\p{Lt}\p{Nd}]$/u.test(before);
  const isTeX = text => /\\[a-zA-Z]|[\^_]/.test(text);

  // \[1\], \[sic\] or \[text\]\(address\) are brackets that were written so as not to make a link.
  const isEscapedSquare = (text, start, end, content) => {
    const before = text.slice(Math.max(0, start - 2), start);
    if (endsWord(before) || before.endsWith("]") || /^(?:\\?[([]|:)/.test(text.slice(end, end + 2))) return true;
    if (isTeX(content)) return false;
    const isProse = /^[\p{L}\p{N}\s.,;:!?'"()–—-]*$/u.test(content) && !/^\s*\p{L}\s*$/u.test(content);
    const [lineBefore, lineAfter] = lineAround(text, start, end);
    return isProse || !/^\s*$/.test(lineBefore) || !/^\s*[.,;]?\s*$/.test(lineAfter);
  };
  const isEscapedRound = (text, start, content) => {
    const before = text.slice(Math.max(0, start - 2), start);
    return endsWord(before) || /[_\]]$/.test(before) || /:\/\//.test(content) ||
      !isTeX(content) && /\p{L}{2,}[\s,]+\p{L}{2,}/u.test(content);
  };

  const mostBraces = 100;
  const closingDollar = (text, start) => {
    let depth = 0;
    for (let at = start; at < text.length && depth >= 0 && depth < mostBraces; ++at) {
      const sign = text[at];
      if (sign === "\n") return -1;
      else if (sign === "\\") at += dollarLength(text, at + 1);
      else if (sign === "{") ++depth;
      else if (sign === "}") --depth;
      else if (sign === "$" && depth === 0) return at;
      else if (sign === "$") at += dollarLength(text, at) - 1;
    }
    return -1;
  };
  const inlineDollars = (text, at) => {
    const start = at + dollarLength(text, at);
    if (endsWord(text.slice(Math.max(0, at - 2), at)) || !/[^\s$]/.test(text[start] ?? "")) return 0;
    const closing = closingDollar(text, start);
    if (closing <= start || /\s/.test(text[closing - 1])) return 0;
    const end = closing + dollarLength(text, closing);
    const content = text.slice(start, closing);
    const isFromPrice = /^\d/.test(content) && /\*\*|~~|`|\]\(/.test(content);
    const isInAddress = /(?:^|\s)(?:https?:\/\/|www\.)\S*$/i.test(content);
    return isFromPrice || isInAddress || /^\p{Nd}/u.test(text.slice(end, end + 2)) ? 0 : end - at;
  };
  const displayLength = (text, at) => {
    for (const pattern of displays) {
      const match = matchAt(pattern, text, at);
      const length = match?.[0].length ?? 0;
      const isEscaped = length > 0 && text[at + 1] === "[" && isEscapedSquare(text, at, at + length, match[1]);
      if (length > 0 && !isEscaped) return length;
    }
    return 0;
  };
  const formulaLength = (text, at) => {
    const display = displayLength(text, at);
    if (display > 0) return display;
    if (text[at] === "$") return inlineDollars(text, at);
    const match = matchAt(round, text, at);
    if (match) return isEscapedRound(text, at, match[1]) ? 0 : match[0].length;
    return matchAt(reference, text, at)?.[0].length ?? 0;
  };

  const rawElement = /<(pre|code|kbd|script|style|textarea|title|xmp|iframe|noembed|noframes|noscript)(?![-\w])[^]*?<\/\1\s*>/iy;
  const anyTag = /<(?:!--[^]*?-->|\/?[a-z](?:"[^"]*"|'[^']*'|[^"'>])*>)/iy;

  // Goes through a text as marked's inline grammar does, or through HTML.
  class Scan {
    constructor(lexer, text, isHtml) {
      Object.assign(this, { lexer, text, isHtml, result: "", copied: 0, brackets: [], openDisplay: -1 });
      this.lastParenthesis = text.lastIndexOf(")");
    }

    run(keep) {
      const sign = this.isHtml ? /[\\$<]/g : /[\\$`<[\]]|(?:https?|ftp):\/\/|www\./gi;
      for (let match = sign.exec(this.text); match; match = sign.exec(this.text)) {
        const at = match.index;
        const length = this.isFormulaStart(at) ? this.accepted(at, formulaLength(this.text, at)) : 0;
        if (length > 0) {
          const formula = this.text.slice(at, at + length);
          this.result += this.text.slice(this.copied, at) + keep(formula, this.isHtml);
          this.copied = at + length;
        }
        sign.lastIndex = at + (length || this.stepLength(match[0], at));
      }
      return this.result + this.text.slice(this.copied);
    }

    isFormulaStart(at) {
      return this.text[at] === "$" || this.text[at] === "\\" && /[([a-z]/.test(this.text[at + 1] ?? "");
    }

    // What takes in the end of an element or of a link's text is none.
    accepted(at, length) {
      const formula = this.text.slice(at, at + length);
      if ((this.isHtml ? /<[a-z/!?]/i : /<\/[a-z]/i).test(formula)) return 0;
      if (this.brackets.length === 0 || !formula.includes("](")) return length;
      let depth = 0;
      for (let place = 0; place < formula.length && depth >= 0; ++place)
        depth += formula[place] === "[" ? 1 : formula[place] === "]" ? -1 : 0;
      return depth < 0 ? 0 : length;
    }

    stepLength(sign, at) {
      const { tokenizer } = this.lexer;
      const { text } = this;
      if (sign === "\\") return this.escapeLength(at);
      if (sign === "$") return this.dollarsLength(at);
      if (sign === "<") {
        const raw = matchAt(rawElement, text, at) ?? (this.isHtml ? matchAt(anyTag, text, at) : null);
        if (raw || this.isHtml) return raw?.[0].length ?? 1;
        const rest = text.slice(at);
        return (tokenizer.rules.inline.tag.exec(rest) ?? tokenizer.rules.inline.autolink.exec(rest))?.[0].length ?? 1;
      }
      if (sign === "`") {
        const rest = text.slice(at);
        return (tokenizer.rules.inline.code.exec(rest) ?? /^`+/.exec(rest))[0].length;
      }
      if (sign === "[") {
        this.brackets.push({ at, result: this.result.length, copied: this.copied });
        return 1;
      }
      if (sign === "]") return this.linkEndLength(at);
      return tokenizer.url(text.slice(at))?.raw.length || sign.length;
    }

    escapeLength(at) {
      if (this.text[at + 1] !== "$") {
        const isOpen = ["\\[", "\\begin{"].some(start => this.text.startsWith(start, at));
        if (isOpen && this.openDisplay < 0) this.openDisplay = at;
        return 2;
      }
      const [sign] = matchAt(oneDollar, this.text, at + 1);
      numbersIn(sign).forEach(number => escapedDollars.add(number));
      return 1 + sign.length;
    }

    dollarsLength(at) {
      const [signs] = matchAt(new RegExp(`(?:${dollar})+`, "y"), this.text, at);
      const isDouble = signs.length > dollarLength(this.text, at);
      if (isDouble && this.openDisplay < 0) this.openDisplay = at;
      return signs.length;
    }

    // The end of a link's text, or of a picture's, with all that follows up to its end.
    linkEndLength(at) {
      const open = this.brackets.pop();
      const sign = this.text[at + 1];
      if (!open || sign !== "[" && (sign !== "(" || at > this.lastParenthesis)) return 1;
      const { state, tokenizer, tokens } = this.lexer;
      const { linkEmitted, linkParenPossible } = state;
      state.linkParenPossible = true;
      const longestLabel = 1000;
      const link = sign === "(" ? tokenizer.link(`[x${this.text.slice(at)}`)
        : tokenizer.reflink(`[x${this.text.slice(at, at + longestLabel)}`, tokens.links ?? {});
      Object.assign(state, { linkEmitted, linkParenPossible });
      if (link?.type !== "link") return 1;
      if (this.text[open.at - 1] === "!") { // The text in place of a picture is plain.
        this.result = this.result.slice(0, open.result);
        this.copied = open.copied;
      }
      return link.raw.length - 2;
    }
  }

  let formulas = [];
  const escapedDollars = new Set();
  const keepAside = (text, isHtml) => `\uFDD2${formulas.push({ text, isHtml }) - 1}\uFDD3`;
  const withFormulasAside = (lexer, text, isHtml) =>
    mayHoldFormula.test(text) ? new Scan(lexer, text, isHtml).run(keepAside) : text;

  let depth = 0;
  const { inlineTokens } = Lexer.prototype;
  Lexer.prototype.inlineTokens = function (source, tokens) {
    const text = depth === 0 ? withFormulasAside(this, source, false) : source;
    ++depth;
    try {
      return inlineTokens.call(this, text, tokens);
    } finally {
      --depth;
    }
  };

  // A displayed formula goes on over lines that would begin a list or underline a heading.
  const wholeLength = (tokenizer, source, rule) => {
    let end = rule.exec(source)?.[0].length ?? 0;
    while (end > 0 && mayHoldDisplay.test(source.slice(0, end))) {
      ++depth;
      const scan = new Scan(tokenizer.lexer, source.slice(0, end), false);
      scan.run(text => text);
      --depth;
      const open = scan.openDisplay;
      const formulaEnd = open < 0 ? 0 : open + displayLength(source, open);
      if (formulaEnd <= end) break;
      end = formulaEnd + rule.exec(`x${source.slice(formulaEnd)}`)[0].length - 1;
    }
    return end;
  };
  const { lheading, html } = Tokenizer.prototype;
  for (const type of ["paragraph", "text"]) {
    const original = Tokenizer.prototype[type];
    Tokenizer.prototype[type] = function (source) {
      const rule = this.rules.block[type];
      const length = mayHoldDisplay.test(source) ? wholeLength(this, source, rule) : 0;
      if (length === 0 || length === rule.exec(source)[0].length) return original.call(this, source);
      const raw = source.slice(0, length);
      const text = raw.replace(/\n$/, "");
      return { type, raw, text, tokens: this.lexer.inline(text) };
    };
  }
  Tokenizer.prototype.lheading = function (source) {
    const { rules } = this;
    const match = mayHoldDisplay.test(source) ? rules.block.lheading.exec(source) : null;
    return match && wholeLength(this, source, rules.block.lheading) > match[0].length ? undefined : lheading.call(this, source);
  };
  Tokenizer.prototype.html = function (source) {
    const token = html.call(this, source);
    if (token && !token.pre) token.text = withFormulasAside(this.lexer, token.text, true);
    return token;
  };

  const markup = ({ text, isHtml }) => {
    const escaped = isHtml ? text : text.replaceAll("&", "&amp;").replaceAll("<", "&lt;");
    return `<span class="tessaly-formula">${escaped}</span>`;
  };
  const parseAround = (source, options) => {
    formulas = [];
    depth = 0;
    return parse(source, options)
      .replace(aside, (whole, index) => formulas[index] ? markup(formulas[index]) : whole)
      .replaceAll(plainDollar, "$").replaceAll(encodeURI(plainDollar), "$")
      .replaceAll(encodeURI(innerDollar), "%24").replaceAll(nothing, "");
  };

  // For a page that takes $…$ and $$…$$ out of a text before it is parsed: the same text, in which no other dollar can be
  // taken for one of theirs until it is parsed.
  const withoutOtherDollars = source => {
    let count = 0;
    escapedDollars.clear();
    globalThis.marked.parse(source.replace(/\$/g, () => `$${digits(count++)}$`), { gfm: true, breaks: true });
    const kept = new Map();
    for (const { text } of formulas.filter(formula => formula.text.startsWith("$"))) {
      const numbers = numbersIn(text);
      const plain = text.replace(/\$[\uFDE0-\uFDEF]+\$/g, "$").replaceAll(lessThan, "<");
      const length = /^\$\$/.test(plain) ? 2 : 1;
      const sign = plain.slice(0, length);
      const content = plain.slice(length, -length).replaceAll("$", innerDollar);
      kept.set(numbers[0], { last: numbers.at(-1), text: sign + content + sign });
    }
    const places = [...source.matchAll(/\$/g)].map(({ index }) => index);
    let result = "";
    let copied = 0;
    let formulaEnd = -1;
    for (let number = 0; number < places.length; ++number) {
      const formula = kept.get(number);
      const place = places[number];
      result += source.slice(copied, escapedDollars.has(number) ? place - 1 : place);
      result += formula ? (place === formulaEnd ? nothing : "") + formula.text : plainDollar;
      if (formula) number = formula.last;
      copied = places[number] + 1;
      if (formula) formulaEnd = copied;
    }
    return result + source.slice(copied);
  };

  // Its own members are read-only.
  globalThis.marked = Object.create(marked, { parse: { value: parseAround }, withoutOtherDollars: { value: withoutOtherDollars } });
}
