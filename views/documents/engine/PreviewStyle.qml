import QtQuick
import Tessaly.Ui

/// Style rules that replace parts of the page's own style, which assumes a light background and fonts that may be missing.
QtObject {
    id: style

    readonly property string css: Theme.isDark ? shared + dark : shared
    readonly property string imports: Theme.isDark ? `@import url("/npm/highlight.js@11.11.1/styles/github-dark.min.css");` : ""

    /// Precedes the address of content that is not shown.
    readonly property string notShown: Language.text("此处不显示：", "not shown here: ")
    readonly property string shared: `
        body{font-family:"${Application.font.family}","Noto Sans CJK SC",sans-serif;margin:0;overflow-wrap:anywhere}
        blockquote{margin:1em 0}
        img{max-width:100%;object-fit:contain}
        th,td{overflow-wrap:break-word}
        th[align=right],td[align=right]{text-align:right}
        th[align=center],td[align=center]{text-align:center}
        .tessaly-on-dark{color:white}
        .tessaly-on-dark a{color:inherit}
        .tessaly-on-dark code{background:rgba(255,255,255,.15)}
        .tessaly-not-shown{font-size:.85em;opacity:.7;overflow-wrap:anywhere}
        .tessaly-not-shown::before{content:" ${notShown}"}
        div.table{overflow-x:auto}
        #content dialog{position:static!important}
        #content svg{overflow:hidden!important}
        mjx-container[jax="CHTML"][display="true"],mjx-container.long{overflow-x:auto;overflow-y:hidden}
        mjx-container[jax="CHTML"][display="true"]{padding:2px 0}
        mjx-container.long{display:inline-block;max-width:100%;vertical-align:middle}
        pre,code{font-family:${families(Theme.sourceFamilies)},monospace}
        pre,code{font-variant-ligatures:none}
        pre{font-size:13px;line-height:1.5}
        pre code.hljs{background:transparent;padding:0}
        html{overflow:overlay}
        ::-webkit-scrollbar{width:12px;height:12px}
        ::-webkit-scrollbar-thumb{background:transparent;background-clip:content-box;border:3px solid transparent;border-radius:6px}
        .scrolling::-webkit-scrollbar-thumb,#content :hover::-webkit-scrollbar-thumb,::-webkit-scrollbar-thumb:hover{background-color:${rgba(Theme.thumb)}}
        ::-webkit-scrollbar-corner{background:transparent}`
    readonly property string dark: `
        body{color:${rgba(Theme.text)}}
        a{color:${rgba(Theme.accentText)}}
        pre{background:${rgba(Theme.card)}}
        code{background:${rgba(Theme.hover)}}
        th,td{border-color:${rgba(Theme.borderControl)}}
        blockquote{border-left-color:${rgba(Theme.textDisabled)};color:${rgba(Theme.textSecondary)}}
        .tessaly-on-light{color:black}
        .tessaly-on-light a{color:linktext}
        .tessaly-on-light blockquote{color:inherit}
        .tessaly-on-light code{background:rgba(0,0,0,.08)}`

    function families(names: list<string>): string {
        return names.map(name => `"${name}"`).join(",");
    }

    /// CSS writes the opacity last, QML first.
    function rgba(value: color): string {
        return `rgba(${Math.round(value.r * 255)},${Math.round(value.g * 255)},${Math.round(value.b * 255)},${value.a})`;
    }
}
