// Loaded before MathJax: adapts the content of the preview.
{
  // The original addresses of pictures requested from the program.
  const asked = new WeakMap();
  const failed = new WeakSet();

  // The program finds local pictures and follows redirects. Each page requests them again, because files may change.
  const page = location.pathname.split("/").at(-1);
  const askFor = picture => {
    const address = picture.getAttribute("src");
    asked.set(picture, address);
    picture.removeAttribute("srcset");
    picture.setAttribute("src", `/picture/${page}?${encodeURIComponent(address)}`);
  };
  const giveUp = picture => {
    failed.add(picture);
    const note = document.createElement("span");
    note.className = "tessaly-not-shown";
    note.textContent = asked.get(picture);
    picture.after(note);
    picture.setAttribute("src", asked.get(picture));
  };
  addEventListener("error", ({ target }) => {
    if (!(target instanceof HTMLImageElement) || failed.has(target)) return;
    if (asked.has(target)) giveUp(target);
    else if (target.hasAttribute("src") && !target.src.startsWith("data:")) askFor(target);
  }, true);

  // An element's own background may be light on a dark page. Returns "light", "dark" or, if it is transparent, null.
  const shadeOf = element => {
    const { backgroundColor, backgroundImage } = getComputedStyle(element);
    const colours = `${backgroundColor} ${backgroundImage}`.matchAll(/rgba?\((\d+), (\d+), (\d+)(?:, ([\d.]+))?\)/g);
    const colour = [...colours].find(([, , , , alpha]) => Number(alpha ?? 1) > 0.5);
    if (!colour) return null;
    const [red, green, blue] = colour.slice(1, 4).map(Number);
    return 0.299 * red + 0.587 * green + 0.114 * blue > 140 ? "light" : "dark"; // As in ITU-R BT.601.
  };

  globalThis.prepareContent = root => {
    for (const picture of root.querySelectorAll("img[src]"))
      if (!/^\s*(?:data|https):/i.test(picture.getAttribute("src"))) askFor(picture);
    for (const element of root.querySelectorAll("[style*=background i],[bgcolor]")) {
      const shade = shadeOf(element);
      if (shade) element.classList.add(`tessaly-on-${shade}`);
    }
    for (const table of root.querySelectorAll("table")) {
      const frame = document.createElement("div");
      frame.className = "table";
      table.replaceWith(frame);
      frame.append(table);
    }
  };
}
