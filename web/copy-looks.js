// Loaded by the page that is copied: writes the computed style of every element under the root into its style attribute
// and removes class and id. Properties have their names in scripts.
globalThis.writeLooks = (root, properties) => {
  // Reading a style after a change recomputes the page's styles, so everything is read before anything is written, except
  // that line heights are written first, because descendants inherit the written value. Elements with the same tag,
  // class, style and ancestors have the same look, which is computed once.
  const names = properties.map(property => [property, property.replace(/[A-Z]/g, letter => `-${letter.toLowerCase()}`)]);
  const lookOf = element => {
    const computed = getComputedStyle(element);
    return names.map(([property, name]) => `${name}:${computed[property]}`).join(";");
  };
  const harmless = ["class", "style", "href", "src", "alt", "title", "data-highlighted"];
  const hasRules = root.querySelector("summary,legend") !== null;
  const kindKey = element => {
    const isAlone = hasRules || element.getAttributeNames().some(name => !harmless.includes(name));
    return isAlone ? element : [element.localName, element.hasAttribute("href"), element.getAttribute("class"),
      element.getAttribute("style")].join();
  };

  [...root.children].map(element => [element.style, getComputedStyle(element).lineHeight])
    .forEach(([style, height]) => style.lineHeight = height);
  const looks = new Map();
  const written = new Map();
  const kindOf = new Map([[root, new Map()]]);
  const elements = [...root.querySelectorAll("*")];
  for (const element of elements) {
    const siblings = kindOf.get(element.parentNode);
    const key = kindKey(element);
    if (!siblings.has(key)) {
      const kind = new Map();
      siblings.set(key, kind);
      looks.set(kind, lookOf(element));
    }
    kindOf.set(element, siblings.get(key));
  }
  for (const element of elements) {
    const kind = kindOf.get(element);
    if (written.has(kind)) {
      element.setAttribute("style", written.get(kind));
    } else {
      element.style.cssText = looks.get(kind);
      written.set(kind, element.getAttribute("style"));
    }
    ["class", "id", "data-highlighted"].forEach(name => element.removeAttribute(name));
  }
};
