#include "model/MarkdownPage.h"

#include "model/FormulaProtection.h"

#include <QHash>
#include <QRegularExpression>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

const QString highlightPackage = u"npm/highlight.js@11.11.1/"_s;

QString imageType(const QUrl &url)
{
    static const QHash<QString, QString> types{
        {u"jpg"_s, u"image/jpeg"_s},  {u"jpeg"_s, u"image/jpeg"_s}, {u"gif"_s, u"image/gif"_s},
        {u"webp"_s, u"image/webp"_s}, {u"heic"_s, u"image/heic"_s},
    };
    const QString name = url.fileName();
    const QString extension = name.mid(name.lastIndexOf(u'.') + 1).toLower();
    return types.value(extension, u"image/png"_s);
}

/// The start of both pages, up to their own style.
QString headStart()
{
    return uR"(<!doctype html><html><head><meta charset="utf-8"><link rel="stylesheet" href=")"_s + packageRoot +
           highlightPackage + uR"(styles/github.min.css">)"_s;
}

QString scriptElement(const QString &path)
{
    return uR"(<script src=")"_s + packageRoot + path + uR"("></script>)"_s;
}

} // namespace

QString embeddingLocalImages(const QString &markdown, const FileReader &readFile)
{
    static const QRegularExpression link(uR"(!\[([^\]]*)\]\((file://[^)]+)\))"_s);
    QString result;
    qsizetype copied = 0;
    QRegularExpressionMatchIterator matches = link.globalMatch(markdown);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QUrl url(match.captured(2));
        const std::optional<QByteArray> bytes = url.isValid() ? readFile(url) : std::nullopt;
        if (!bytes)
            continue;
        result += QStringView(markdown).mid(copied, match.capturedStart() - copied);
        result += u"!["_s + match.captured(1) + u"](data:"_s + imageType(url) + u";base64,"_s +
                  QString::fromLatin1(bytes->toBase64()) + u')';
        copied = match.capturedEnd();
    }
    if (copied == 0)
        return markdown;
    result += QStringView(markdown).mid(copied);
    return result;
}

QString templateLiteralText(const QString &text)
{
    QString result = text;
    result.replace(u'\\', u"\\\\"_s).replace(u'`', u"\\`"_s).replace(u"${"_s, u"\\${"_s);
    // An HTML parser looks for these in every inline script, whatever the script's own grammar says.
    static const QRegularExpression scriptSequence(u"<(?=/script|script|!--)"_s,
                                                   QRegularExpression::CaseInsensitiveOption);
    return result.replace(scriptSequence, u"<\\"_s);
}

QString markdownPage(const QString &markdown, const FileReader &readFile)
{
    static const QString style =
        u"<style>body{font:16px -apple-system;padding:18px;line-height:1.55;color:#222}"
        "pre{background:#f6f8fa;padding:12px;border-radius:8px;overflow:auto}"
        "pre code{background:transparent;padding:0;border-radius:0}"
        "code{background:#f3f4f6;padding:2px 4px;border-radius:4px}"
        "table{border-collapse:collapse;width:100%}th,td{border:1px solid #d1d5db;padding:7px;text-align:left}"
        "blockquote{border-left:3px solid #9ca3af;padding-left:12px;color:#4b5563}</style>"_s;
    static const QString mathConfiguration =
        uR"(<script>window.MathJax={tex:{inlineMath:[['$','$'],['\\(','\\)']],displayMath:[['$$','$$'],['\\[','\\]']]},svg:{fontCache:'global'}};</script>)"_s;
    static const QString tail =
        u"`;document.getElementById('content').innerHTML=marked.parse(source,{gfm:true,breaks:true});"
        "document.querySelectorAll('pre code').forEach(block=>hljs.highlightElement(block));"
        "MathJax.typesetPromise();</script></body></html>"_s;

    const QString text = templateLiteralText(protectFormulas(embeddingLocalImages(markdown, readFile)));
    return headStart() + style + scriptElement(u"npm/marked/marked.min.js"_s) +
           scriptElement(highlightPackage + u"lib/common.min.js"_s) + mathConfiguration +
           scriptElement(u"npm/mathjax@3/es5/tex-mml-chtml.js"_s) +
           uR"(</head><body><div id="content"></div><script>const source=`)"_s + text + tail;
}

QString inlineStylePage(const QString &markdown)
{
    static const QString style =
        u"<style>body{font:16px -apple-system;line-height:1.75;color:#222}"
        "h1{font-size:24px;font-weight:700;margin:28px 0 16px}h2{font-size:20px;font-weight:700;margin:24px 0 14px}"
        "h3{font-size:18px;font-weight:700;margin:20px 0 12px}p{margin:12px 0}"
        "blockquote{border-left:4px solid #999;margin:16px 0;padding:8px 12px;color:#555;background:#f7f7f7}"
        "table{border-collapse:collapse;width:100%;margin:16px 0}"
        "th,td{border:1px solid #999;padding:7px;text-align:left}th{background:#f3f3f3}"
        "img{max-width:100%;height:auto}"
        "pre{background:#f6f8fa;padding:12px;border-radius:6px;white-space:pre-wrap}"
        "pre code{background:transparent;padding:0}code{background:#f4f4f4;padding:2px 4px;border-radius:3px}"
        "ul,ol{padding-left:26px}</style>"_s;
    static const QString formulas =
        uR"(`;const root=document.getElementById('content');)"
        uR"(const formulaURL=tex=>'%1'+encodeURIComponent(tex.trim());)"
        uR"(const formulaImage=(tex,block)=>{const style=block?'display:block;margin:16px auto;max-width:100%;':)"
        uR"('display:inline-block;vertical-align:middle;max-height:1.6em;';)"
        uR"(return '<img src="'+formulaURL(tex)+'" alt="formula" style="'+style+'">';};)"
        uR"(let prepared=source.replace(/\$\$([\s\S]+?)\$\$/g,(_,tex)=>'\n'+formulaImage(tex,true)+'\n').replace(/\$([^$\n]+?)\$/g,(_,tex)=>formulaImage(tex,false));)"
        uR"(root.innerHTML=marked.parse(prepared,{gfm:true,breaks:true});root.querySelectorAll('pre code').forEach(block=>hljs.highlightElement(block));)"_s;
    static const QString inlineStyles =
        uR"(const inlineStyles=()=>{const properties=['color','backgroundColor','fontSize','fontWeight','fontStyle','textDecorationLine','lineHeight','textAlign','marginTop','marginRight','marginBottom','marginLeft','paddingTop','paddingRight','paddingBottom','paddingLeft','borderTop','borderRight','borderBottom','borderLeft','borderRadius','display','width','maxWidth','whiteSpace','wordBreak','verticalAlign'];)"
        // Reading a style after a change has the page's styles computed anew, so all is read before anything is
        // written; only line heights, once written, are those of what is within. What tag, class, own style and
        // ancestors decide is computed once for all of a kind.
        uR"(const looks=new Map(),written=new Map(),kindOf=new Map([[root,new Map()]]);)"
        uR"([...root.children].map(element=>[element.style,getComputedStyle(element).lineHeight]).forEach(([style,height])=>style.lineHeight=height);)"
        uR"(const harmless=['class','style','href','src','alt','title','data-highlighted'];)"
        uR"(const hasRules=root.querySelector('summary,legend')!==null;const elements=[...root.querySelectorAll('*')];)"
        uR"(elements.forEach(element=>{const siblings=kindOf.get(element.parentNode);)"
        uR"(const isAlone=hasRules||element.getAttributeNames().some(name=>!harmless.includes(name));)"
        uR"(const key=isAlone?element:[element.localName,element.hasAttribute('href'),element.getAttribute('class'),element.getAttribute('style')].join();)"
        uR"(if(!siblings.has(key)){const computed=getComputedStyle(element);const kind=new Map();siblings.set(key,kind);)"
        uR"(looks.set(kind,properties.map(p=>p.replace(/[A-Z]/g,m=>'-'+m.toLowerCase())+':'+computed[p]).join(';'));})"
        uR"(kindOf.set(element,siblings.get(key));});)"
        uR"(elements.forEach(element=>{const kind=kindOf.get(element);)"
        uR"(if(written.has(kind))element.setAttribute('style',written.get(kind));)"
        uR"(else{element.style.cssText=looks.get(kind);written.set(kind,element.getAttribute('style'));})"
        uR"(element.removeAttribute('class');element.removeAttribute('id');});};)"
        uR"(inlineStyles();window.brennicCopyReady=true;</script></body></html>)"_s;

    // With the body not rendered, computed widths and margins are the values as written, not the page's geometry.
    return headStart() + style + scriptElement(u"npm/marked/marked.min.js"_s) +
           scriptElement(highlightPackage + u"lib/common.min.js"_s) +
           uR"(</head><body hidden><div id="content"></div><script>const source=`)"_s +
           templateLiteralText(protectDollars(markdown)) + formulas.arg(formulaService) + inlineStyles;
}

} // namespace tessaly
