// Loaded before MathJax.
{
  // Up to this number, all formulas are typeset before the page shows. Each takes some milliseconds and tens of
  // kilobytes, so a page with more typesets those in view first and the others when they come near.
  const eager = 300;
  const slice = 40;
  // In pixels. Formulas do not wrap, so a longer inline formula scrolls if it does not fit its line.
  const longFormula = 300;

  // The HTML of formulas that are typeset.
  const sources = new WeakMap();
  let typeset = null;
  let last = Promise.resolve();
  const waiting = new Set();
  const near = new Set();

  // The typesetter positions things by its style sheet. A position set with \style could place a formula over the page.
  const keepInPlace = element => {
    for (const { style } of element.querySelectorAll("mjx-container [style*=position]"))
      if (style.position !== "relative") style.removeProperty("position");
  };

  const typesetSome = elements => last = last.then(async () => {
    elements.forEach(element => sources.set(element, element.innerHTML));
    await typeset(elements).catch(() => {});
    MathJax.startup.document.clear(); // It keeps data of each formula for its menu only.
    elements.forEach(keepInPlace);
    const long = elements.flatMap(element => [...element.querySelectorAll("mjx-container:not([display])")])
      .filter(formula => formula.offsetWidth > longFormula);
    long.forEach(formula => formula.classList.add("long"));
  });

  const typesetWaiting = async elements => {
    const some = elements.filter(element => waiting.delete(element));
    some.forEach(element => (near.delete(element), observer.unobserve(element)));
    if (some.length > 0) await typesetSome(some);
    await new Promise(done => setTimeout(done));
  };

  let isAtWork = false;
  const typesetNear = async () => {
    if (isAtWork) return;
    isAtWork = true;
    while (near.size > 0) await typesetWaiting([...near].slice(0, slice));
    isAtWork = false;
  };

  const observer = new IntersectionObserver(entries => {
    for (const { target, isIntersecting } of entries) {
      if (isIntersecting && waiting.has(target)) near.add(target);
      else near.delete(target);
    }
    typesetNear();
  }, { rootMargin: "100% 0px" });

  const typesetPage = async () => {
    const formulas = [...document.querySelectorAll(".tessaly-formula")];
    if (formulas.length <= eager) return typesetSome(formulas);
    return typesetLater(formulas);
  };
  const typesetLater = formulas => {
    for (const formula of formulas) {
      waiting.add(formula);
      observer.observe(formula);
    }
  };
  // For formulas that come into the page.
  const typesetFormulas = async formulas => {
    for (const formula of [...waiting].filter(({ isConnected }) => !isConnected)) {
      waiting.delete(formula);
      near.delete(formula);
      observer.unobserve(formula);
    }
    const others = formulas.filter(formula => !sources.has(formula) && !waiting.has(formula));
    if (others.length === 0) return undefined;
    if (others.length + waiting.size <= eager) return typesetSome(others);
    typesetLater(others);
    return MathJax.typesetInView();
  };
  Object.assign(tessaly, { formulaSources: sources, typesetFormulas });

  window.MathJax.options = { enableMenu: false };
  window.MathJax.startup = {
    // If the page requested typesetting while MathJax was starting it too, some formulas would appear twice. So MathJax
    // only typesets on request, one request at a time.
    typeset: false,
    ready() {
      MathJax.startup.defaultReady();
      // The whole page is laid out again whenever a style sheet with fonts changes or a font loads. So the fonts get a
      // style sheet of their own, and those that most formulas need load before the text.
      MathJax.startup.document.addStyleSheet();
      const { sheet } = document.getElementById("MJX-CHTML-styles");
      const fonts = document.head.appendChild(document.createElement("style"));
      for (let rule = sheet.cssRules.length - 1; rule >= 0; --rule) {
        if (!(sheet.cssRules[rule] instanceof CSSFontFaceRule)) continue;
        fonts.append(sheet.cssRules[rule].cssText);
        sheet.deleteRule(rule);
      }
      document.fonts.forEach(font => /^"?MJX(ZERO|TEX|TEX-I|TEX-S1|TEX-S2|TEX-A)"?$/.test(font.family) && font.load());
      typeset = MathJax.typesetPromise;
      MathJax.typesetPromise = () => {
        tessaly.prepareContent(document.getElementById("content"));
        return (MathJax.startup.promise = MathJax.startup.promise.then(typesetPage));
      };
      // Resolves when all formulas in view are typeset.
      MathJax.typesetInView = async () => {
        const isInView = ({ top, bottom }) => bottom > -innerHeight / 2 && top < innerHeight * 1.5;
        for (let pass = 0; pass < 10 && waiting.size > 0; ++pass) {
          const inView = [...waiting].filter(element => isInView(element.getBoundingClientRect()));
          if (inView.length === 0) break;
          await typesetWaiting(inView.slice(0, eager));
        }
      };
    },
  };
}
