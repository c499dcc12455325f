// Loaded after marked. Removes elements that would restyle the rest of the page, frame another page, play media or
// redirect, and in the preview also styles that would cover the rest of the page.
{
  const parse = marked.parse;
  const shows = ["iframe", "frame", "object", "embed", "portal", "video", "audio"];
  const names = [...shows, "style", "link", "meta", "base", "frameset", "applet", "noscript"];
  // Only the preview typesets formulas.
  const isPreview = () => "MathJax" in globalThis;
  // The typesetter's style sheet applies to these elements and places some over the page.
  const isRefused = ({ localName }) => names.includes(localName) || localName.startsWith("mjx-");
  const start = `<(?=(?:${names.join("|")})(?![-\\w])|mjx-)`;
  const styleName = "([\\s/\"'])style(?=\\s*=)";
  const suspicious = new RegExp(`${start}|${styleName}`, "i");

  // These move an element or let it cover others. A negative margin pulls other elements under it.
  const leaving = new RegExp("^(-webkit-)?(position|transform|translate|rotate|scale|offset|perspective|will-change|z-index|" +
    "box-shadow|outline|filter|backdrop-filter|box-reflect)");
  const leaves = (name, value) => value === "" || leaving.test(name) || /^margin/.test(name) && /[-(]/.test(value);

  // Replaces media or a frame with its address. The preview's style adds an explanation.
  const noteOf = element => {
    const note = element.ownerDocument.createElement("span");
    note.className = "tessaly-not-shown";
    const source = [element, ...element.querySelectorAll("source")].find(({ attributes }) => attributes.src ?? attributes.data);
    note.textContent = source?.getAttribute("src") ?? source?.getAttribute("data") ?? `<${element.localName}>`;
    return note;
  };
  const remove = element => {
    if (isPreview() && shows.includes(element.localName)) element.replaceWith(noteOf(element));
    else element.remove();
  };

  // Returns whether it removed anything.
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
        remove(element);
        isClean = false;
      } else if (isPreview() && restrain(element)) {
        isClean = false;
      }
    }
    return isClean;
  };
  const withoutThem = html => {
    // This document runs no scripts and loads nothing. Serialized HTML may parse differently than it was built, so
    // cleaning repeats until nothing is left to remove.
    const root = document.implementation.createHTMLDocument("").createElement("div");
    for (let pass = 0; pass < 4; ++pass) {
      root.innerHTML = html;
      if (clean(root)) return html;
      html = root.innerHTML;
    }
    const withoutElements = html.replace(new RegExp(start, "gi"), "&lt;");
    return isPreview() ? withoutElements.replace(new RegExp(styleName, "gi"), "$1data-style") : withoutElements;
  };
  const withoutRefused = html => suspicious.test(html) ? withoutThem(html) : html;
  // The preview calls it for each of its parts.
  globalThis.tessaly = { withoutRefused };
  const parseWithout = (source, options) => {
    const html = parse(source, options);
    return isPreview() ? html : withoutRefused(html);
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseWithout } }); // Its own members are read-only.
}
