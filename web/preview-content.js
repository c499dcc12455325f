// Loaded before MathJax: adapts the content of the preview.
{
  // The original addresses of pictures requested from the program, those that failed, and what is said beside them.
  const asked = new WeakMap();
  const notes = new WeakMap();
  const refused = new Set();
  // Tells apart the requests for a picture whose file has changed.
  const versions = new Map();
  // Whether "details" are open in the text. The reader may open and close them.
  const isOpenInText = new WeakMap();

  // The program finds local pictures and follows redirects. Each page requests them again, because files may change.
  const page = location.pathname.split("/").at(-1);
  const requestOf = address => `/picture/${page}${versions.get(address) ?? ""}?${encodeURIComponent(address)}`;
  const askFor = (picture, address) => {
    asked.set(picture, address);
    picture.removeAttribute("srcset");
    picture.setAttribute("src", requestOf(address));
  };
  const giveUp = picture => {
    const address = asked.get(picture);
    const note = document.createElement("span");
    note.className = "tessaly-not-shown";
    note.textContent = address;
    notes.set(picture, note);
    refused.add(address);
    picture.after(note);
    picture.setAttribute("src", address);
  };
  addEventListener("error", ({ target }) => {
    if (!(target instanceof HTMLImageElement) || notes.has(target)) return;
    if (asked.has(target)) giveUp(target);
    else if (target.hasAttribute("src") && !target.src.startsWith("data:")) askFor(target, target.getAttribute("src"));
  }, true);

  const showAgain = picture => {
    notes.get(picture)?.remove();
    notes.delete(picture);
    askFor(picture, asked.get(picture));
  };
  // Requests pictures again whose files have changed or which failed. The old ones stay until the new ones are there.
  const renewPictures = async (root, addresses) => {
    const pictures = addresses.length > 0 ? [...root.querySelectorAll("img")] : [];
    await Promise.all(addresses.map(async (address, index) => {
      const shown = pictures.filter(picture => asked.get(picture) === address);
      if (shown.length === 0) return;
      versions.set(address, `.${performance.now()}.${index}`);
      const probe = new Image();
      probe.src = requestOf(address);
      const isThere = await probe.decode().then(() => true, () => false);
      if (isThere) refused.delete(address);
      for (const picture of shown) {
        if (isThere) showAgain(picture);
        else if (!notes.has(picture)) giveUp(picture);
      }
    }));
  };

  // An element's own background may be light on a dark page. Returns "light", "dark" or, if it is transparent, null.
  const shadeOf = element => {
    const { backgroundColor, backgroundImage } = getComputedStyle(element);
    const colours = `${backgroundColor} ${backgroundImage}`.matchAll(/rgba?\((\d+), (\d+), (\d+)(?:, ([\d.]+))?\)/g);
    const colour = [...colours].find(([, , , , alpha]) => Number(alpha ?? 1) > 0.5);
    if (!colour) return null;
    const [red, green, blue] = colour.slice(1, 4).map(Number);
    return 0.299 * red + 0.587 * green + 0.114 * blue > 140 ? "light" : "dark"; // As in ITU-R BT.601.
  };

  // What needs no layout, so that it can be done before the content is shown.
  const prepareParsed = root => {
    for (const picture of root.querySelectorAll("img[src]")) {
      const address = picture.getAttribute("src");
      if (/^\s*data:/i.test(address)) continue;
      if (!/^\s*https:/i.test(address) || refused.has(address)) askFor(picture, address);
      if (refused.has(address)) giveUp(picture);
    }
    for (const table of root.querySelectorAll("table")) {
      const frame = document.createElement("div");
      frame.className = "table";
      table.replaceWith(frame);
      frame.append(table);
    }
    for (const details of root.querySelectorAll("details")) isOpenInText.set(details, details.open);
  };
  const markShades = root => {
    const selector = "[style*=background i],[bgcolor]";
    for (const element of [root, ...root.querySelectorAll(selector)].filter(one => one.matches(selector))) {
      const shade = shadeOf(element);
      if (shade) element.classList.add(`tessaly-on-${shade}`);
    }
  };
  const prepareContent = root => {
    prepareParsed(root);
    markShades(root);
  };

  // An element takes over what is known of its new version.
  const takeOver = (element, version) => {
    for (const map of [asked, notes, isOpenInText]) {
      if (map.has(version)) map.set(element, map.get(version));
      else map.delete(element);
    }
  };
  const isOpenByReader = (details, version) =>
    isOpenInText.get(details) === isOpenInText.get(version) ? details.open : version.open;

  Object.assign(tessaly, { prepareContent, prepareParsed, markShades, renewPictures, takeOver, isOpenByReader,
    addressOf: picture => asked.get(picture) ?? picture.getAttribute("src") });
}
