// Served behind marked. What would change the look of the rest of the page, frame another, play or lead elsewhere is left
// out of the parsed text, and in the preview what would lie over the rest: a document writes its text, not the page.
{
  const parse = marked.parse;
  const shows = ["iframe", "frame", "object", "embed", "portal", "video", "audio"];
  const names = [...shows, "style", "link", "meta", "base", "frameset", "applet", "noscript"];
  // Only the preview typesets formulas.
  const isPreview = () => "MathJax" in globalThis;
  // The typesetter's own elements are in its style sheet, where some stand over the page.
  const isRefused = ({ localName }) => names.includes(localName) || localName.startsWith("mjx-");
  const start = `<(?=(?:${names.join("|")})(?![-\\w])|mjx-)`;
  const styleName = "([\\s/\"'])style(?=\\s*=)";
  const suspicious = new RegExp(`${start}|${styleName}`, "i");

  // With these an element leaves its place or covers others; with a negative margin it pulls others under itself.
  const leaving = new RegExp("^(-webkit-)?(position|transform|translate|rotate|scale|offset|perspective|will-change|z-index|" +
    "box-shadow|outline|filter|backdrop-filter|box-reflect)");
  const leaves = (name, value) => value === "" || leaving.test(name) || /^margin/.test(name) && /[-(]/.test(value);

  // In the place of something to see or hear, its address, which the preview puts words to.
  const noteOf = element => {
    const note = element.ownerDocument.createElement("span");
    note.className = "tessaly-not-shown";
    const source = [element, ...element.querySelectorAll("source")].find(({ attributes }) => attributes.src ?? attributes.data);
    note.textContent = source?.getAttribute("src") ?? source?.getAttribute("data") ?? `<${element.localName}>`;
    return note;
  };
  const takeOut = element => {
    if (isPreview() && shows.includes(element.localName)) element.replaceWith(noteOf(element));
    else element.remove();
  };

  // Whether there was anything to take out.
  const restrain = element => {
    const { style } = element;
    if (!style) {
      const hasStyle = element.hasAttribute("style");
      element.removeAttribute("style");
      return hasStyle;
    }
    const refused = [...style].filter(name => leaves(name, style.getPropertyValue(name)));
    refused.forEach(name => style.removeProperty(name));
    return refused.length > 0;
  };
  const clean = root => {
    let isClean = true;
    for (const element of root.querySelectorAll("*")) {
      if (isRefused(element)) {
        takeOut(element);
        isClean = false;
      } else if (isPreview() && restrain(element)) {
        isClean = false;
      }
    }
    return isClean;
  };
  const withoutThem = html => {
    // In a page without scripts, which loads nothing. What is written anew may be read otherwise than it was built, so
    // it is read until there is nothing left to take out.
    const root = document.implementation.createHTMLDocument("").createElement("div");
    for (let pass = 0; pass < 4; ++pass) {
      root.innerHTML = html;
      if (clean(root)) return html;
      html = root.innerHTML;
    }
    const withoutElements = html.replace(new RegExp(start, "gi"), "&lt;");
    return isPreview() ? withoutElements.replace(new RegExp(styleName, "gi"), "$1data-style") : withoutElements;
  };
  const parseWithout = (source, options) => {
    const html = parse(source, options);
    return suspicious.test(html) ? withoutThem(html) : html;
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseWithout } }); // Its own members are read-only.
}
