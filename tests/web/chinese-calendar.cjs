// Writes what two other sources say of the days of 1900 to 2100: node chinese-calendar.cjs NODE_MODULES OUTPUT
// A line for each day: date, lunar day as astronomy has it, lunar day of a printed table, solar term as astronomy has it
// (0 … 23, or -), and from 2004 to 2026 whether people work ("work", "off", else "-").
"use strict";

const fs = require("node:fs");
const path = require("node:path");

const [modules, output] = process.argv.slice(2);
const { CalendarChinese } = require(path.join(modules, "date-chinese"));
const { julian } = require(path.join(modules, "astronomia"));
const table = require(path.join(modules, "chinese-days"));

const calendar = new CalendarChinese();
const lunarText = (month, day, isLeap) => (isLeap ? "L" : "") + month + "/" + day;
const solarTerms = new Map();
for (let year = 1900; year <= 2101; ++year) {
    for (let term = 0; term < 24; ++term) {
        // Its years begin with the third term; the first two follow them.
        const found = calendar.solarTerm((term + 22) % 24 + 1, term < 2 ? year - 1 : year);
        const utc = new julian.CalendarGregorian().fromJDE(found);
        const local = new julian.CalendarGregorian().fromJDE(found + calendar.timeshiftUTC(utc) + 0.01);
        solarTerms.set([local.year, local.month, Math.floor(local.day)].join("-"), term);
    }
}

const lines = [];
for (let time = Date.UTC(1900, 0, 31); time < Date.UTC(2101, 0, 1); time += 86400000) {
    const day = new Date(time).toISOString().slice(0, 10);
    const [year, month, date] = day.split("-").map(Number);
    calendar.fromGregorian(year, month, date);
    const printed = table.getLunarDate(day);
    const work = year < 2004 || year > 2026 ? "-" : table.getDayDetail(day).work ? "work" : "off";
    lines.push([day, lunarText(calendar.month, calendar.day, calendar.leap),
        lunarText(printed.lunarMon, printed.lunarDay, printed.isLeap), solarTerms.get([year, month, date].join("-")) ?? "-", work].join(" "));
}
fs.writeFileSync(output, lines.join("\n") + "\n");
