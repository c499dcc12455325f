// Loaded before MathJax: shows an edited text in the page that is there. Only parts that differ are changed, so pictures,
// formulas, coloured code and what the reader has opened stay as they are. The result equals that of a new page.
{
  const { boundary, formulaSources } = tessaly;
  const content = () => Document.prototype.getElementById.call(document, "content"); // Elements may have this name, too.

  // Each part: its HTML and the comment in front of it. Of the page as it was loaded, they are read when they are needed.
  let parts = null;
  const isBoundary = node => node instanceof Comment && node.data === boundary;
  const readParts = () => {
    const starts = [...content().childNodes].filter(isBoundary);
    if (starts.length !== tessaly.shown.parts.length) throw new Error("The page is not what was written.");
    return starts.map((start, index) => ({ start, html: tessaly.shown.parts[index] }));
  };
  const nodesOf = ({ start }) => {
    const nodes = [];
    for (let node = start.nextSibling; node && !isBoundary(node); node = node.nextSibling) nodes.push(node);
    return nodes;
  };

  // What a formula defines holds for all that are typeset after it, in a new page for those behind it.
  const formulas = /<span class="tessaly-formula">[^<]*/g;
  const defines = /\\(?:[a-z]*(?:new(?!line)|provide|declare|define)[a-z]+|[egx]?def|let|require|label|(?:eq)?ref)(?![a-z])/i;
  const definitionsIn = html => (html.match(formulas) ?? []).filter(formula => defines.test(formula)).join("");
  // A page with many more formulas appears when they are typeset.
  const mostFormulas = 40;

  // A document that loads nothing. Not a template, whose content may begin with parts of a table, unlike that of the page.
  const inert = document.implementation.createHTMLDocument("");
  const contentOf = html => {
    const root = inert.createElement("div");
    root.innerHTML = html;
    root.querySelectorAll("pre code").forEach(code => hljs.highlightElement(code));
    tessaly.prepareParsed(root);
    return root;
  };

  // Pictures and formulas are recognized wherever they have moved to. The number tells equal ones apart.
  const keys = new WeakMap();
  const sourceOf = formula => formulaSources.get(formula) ?? formula.innerHTML;
  const setKeys = nodes => {
    const counts = new Map();
    const elements = nodes.filter(node => node instanceof Element);
    for (const element of elements.flatMap(one => [...one.querySelectorAll("img,.tessaly-formula")])) {
      const source = element.localName === "img" ? tessaly.addressOf(element) : sourceOf(element);
      const name = `${element.localName} ${source}`;
      counts.set(name, (counts.get(name) ?? 0) + 1);
      keys.set(element, `${counts.get(name)} ${name}`);
    }
  };
  const isFormula = element => element.classList?.contains("tessaly-formula");
  const isSameFormula = (formula, version) =>
    isFormula(version) && sourceOf(formula) === sourceOf(version) && formula.cloneNode().isEqualNode(version.cloneNode());
  const prepareToMorph = (element, version) => {
    if (isFormula(element)) {
      if (isSameFormula(element, version)) return false;
      formulaSources.delete(element);
    }
    if (element.localName === "details") version.open = tessaly.isOpenByReader(element, version);
    tessaly.takeOver(element, version);
    return true;
  };
  const morph = (element, version) =>
    morphdom(element, version, { getNodeKey: node => keys.get(node), onBeforeElUpdated: prepareToMorph });

  const change = (part, html) => {
    part.html = html;
    const nodes = nodesOf(part);
    const end = (nodes.at(-1) ?? part.start).nextSibling;
    const versions = [...contentOf(html).childNodes];
    setKeys(nodes);
    setKeys(versions);
    versions.forEach((version, index) => {
      const node = nodes[index];
      if (!node) content().insertBefore(version, end);
      else if (node instanceof Element && node.nodeName === version.nodeName) morph(node, version);
      else node.replaceWith(version);
    });
    nodes.slice(versions.length).forEach(node => node.remove());
  };

  // For each new part the old one that it is, or that it is a version of; and those that nothing matches.
  const matching = (before, after) => {
    const equal = new Map();
    before.forEach(({ html }, index) => equal.set(html, equal.get(html) ?? []).get(html).push(index));
    const matches = after.map(html => equal.get(html)?.shift());
    const free = new Set(before.keys());
    matches.forEach(index => free.delete(index));
    after.forEach((html, index) => {
      const candidate = (index > 0 ? matches[index - 1] ?? -1 : -1) + 1;
      if (matches[index] === undefined && free.delete(candidate)) matches[index] = candidate;
    });
    return { matches: matches.map(index => before[index]), free: new Set([...free].map(index => before[index])) };
  };
  // Puts the parts in the place of old ones, in front of a node; returns those that are new or have changed.
  const replaceParts = (before, after, end) => {
    const { matches, free } = matching(before, after);
    for (const part of free) [part.start, ...nodesOf(part)].forEach(node => node.remove());
    let place = before.find(part => !free.has(part))?.start ?? end;
    const changed = [];
    const now = after.map((html, index) => {
      const part = matches[index] ?? { start: document.createComment(boundary), html: "" };
      const nodes = [part.start, ...matches[index] ? nodesOf(part) : []];
      if (part.start === place) place = nodes.at(-1).nextSibling;
      else nodes.forEach(node => content().insertBefore(node, place));
      if (part.html !== html) changed.push({ part, html });
      return part;
    });
    for (const { part, html } of changed) change(part, html);
    return { now, changed: changed.map(({ part }) => part) };
  };

  const showParts = after => {
    let start = 0;
    while (start < parts.length && start < after.length && parts[start].html === after[start]) ++start;
    const most = Math.min(parts.length, after.length) - start;
    let rest = 0;
    while (rest < most && parts.at(-1 - rest).html === after.at(-1 - rest)) ++rest;
    const end = parts.length - rest;
    const { now, changed } = replaceParts(parts.slice(start, end), after.slice(start, after.length - rest),
      parts[end]?.start ?? null);
    parts.splice(start, end - start, ...now);
    return changed.flatMap(nodesOf).filter(node => node instanceof Element);
  };

  const isTooMuch = after => {
    const shown = new Set(parts.flatMap(({ html }) => html.match(formulas) ?? []));
    const others = after.flatMap(html => html.match(formulas) ?? []).filter(formula => !shown.has(formula));
    return others.length > mostFormulas;
  };
  const queryAll = (elements, selector) =>
    elements.flatMap(element => [...element.matches(selector) ? [element] : [], ...element.querySelectorAll(selector)]);
  const settle = async (elements, { isToEnd, stale }) => {
    await tessaly.typesetFormulas(queryAll(elements, ".tessaly-formula"));
    await tessaly.renewPictures(content(), stale);
    const pictures = queryAll(elements, "img").filter(({ src }) => !src.startsWith("https:"));
    await Promise.all(pictures.map(picture => picture.decode().catch(() => {})));
    if (!isToEnd) return;
    scrollTo(0, 1e9);
    await MathJax.typesetInView();
    scrollTo(0, 1e9);
  };

  // Replaces a number of characters at a place. Returns false if a new page must show the text, which then has so many
  // characters.
  tessaly.revise = async revision => {
    if (!parts?.[0]?.start.isConnected) parts = readParts();
    const { source, options } = tessaly.shown;
    const text = source.slice(0, revision.start) + revision.text + source.slice(revision.start + revision.removed);
    if (text.length !== revision.length) return false;
    const definitions = definitionsIn(parts.map(({ html }) => html).join(""));
    marked.parse(text, options);
    const after = tessaly.shown.parts;
    if (definitions !== definitionsIn(after.join("")) || isTooMuch(after)) return false;
    const elements = showParts(after);
    elements.forEach(tessaly.markShades);
    const hasNewFormula = queryAll(elements, ".tessaly-formula").some(formula => !formulaSources.has(formula));
    if (definitions !== "" && hasNewFormula) return false;
    await settle(elements, revision);
    return true;
  };
}
