// Writes the table of model/ChineseCalendar.cpp: node chinese-calendar.cjs NODE_MODULES OUTPUT
"use strict";

const fs = require("node:fs");
const path = require("node:path");

const [modules, output] = process.argv.slice(2);
const { HolidayUtil, Lunar, LunarYear, Solar } = require(path.join(modules, "lunar-javascript"));

const firstLunarYear = 1899;
const firstYear = 1900;
const lastYear = 2100;
const terms = ["小寒", "大寒", "立春", "雨水", "惊蛰", "春分", "清明", "谷雨", "立夏", "小满", "芒种", "夏至", "小暑",
    "大暑", "立秋", "处暑", "白露", "秋分", "寒露", "霜降", "立冬", "小雪", "大雪", "DONG_ZHI"];
// In the order of the names in ChineseCalendar.cpp.
const holidays = ["元旦节", "春节", "清明节", "劳动节", "端午节", "中秋节", "国庆节", "国庆中秋", "抗战胜利日"];
// Work days that the library lacks: General Office of the State Council, notice of December 10, 2012.
const missing = [{ day: "2013-04-07", name: "清明节" }, { day: "2013-10-12", name: "国庆节" }];

const dayNumber = (year, month, day) => Math.round(Date.UTC(year, month - 1, day) / 86400000);
const numberOf = solar => dayNumber(solar.getYear(), solar.getMonth(), solar.getDay());
const check = (isTrue, what) => {
    if (!isTrue)
        throw new Error(what);
};

// Bits 0–5: days from January 1 to the new year; 6–9: the leap month, or 0; from 10: whether each month has 30 days.
function lunarYear(year) {
    const months = LunarYear.fromYear(year).getMonths().filter(month => month.getYear() === year);
    const newYear = numberOf(Solar.fromJulianDay(months[0].getFirstJulianDay())) - dayNumber(year, 1, 1);
    let value = newYear;
    let isLeapSeen = false;
    let expected = months[0].getFirstJulianDay();
    months.forEach((month, index) => {
        check(month.getFirstJulianDay() === expected, `${year}: months with a gap`);
        expected += month.getDayCount();
        if (month.getMonth() < 0) {
            check(!isLeapSeen, `${year}: two leap months`);
            isLeapSeen = true;
            value |= -month.getMonth() << 6;
        }
        value |= (month.getDayCount() === 30 ? 1 : 0) << 10 + index;
    });
    check(newYear < 64 && months.length === (isLeapSeen ? 13 : 12), `${year}: ${months.length} months`);
    return value;
}

const years = Array.from({ length: lastYear - firstYear + 1 }, (_, index) => firstYear + index);
const lunarYears = Array.from({ length: lastYear - firstLunarYear + 1 }, (_, index) => lunarYear(firstLunarYear + index));

// Until 1928 the time was that of Beijing's own meridian, 14 minutes and 20 seconds behind that of the library.
const termDays = years.map(year => {
    const table = Lunar.fromYmd(year, 6, 1).getJieQiTable();
    return terms.map((term, index) => {
        const solar = table[term];
        const clock = Date.UTC(year, solar.getMonth() - 1, solar.getDay(), solar.getHour(), solar.getMinute(), solar.getSecond());
        const local = new Date(clock - (year < 1929 ? 860000 : 0));
        check(solar.getYear() === year && local.getUTCMonth() === Math.floor(index / 2), `${year}: ${term}`);
        return local.getUTCDate();
    });
});
const firstTermDays = terms.map((_, index) => Math.min(...termDays.map(days => days[index])));
// Two bits for each solar term: days after the first day on which it ever falls.
const termYears = termDays.map(days => days.reduce((value, day, index) => {
    const late = day - firstTermDays[index];
    check(late < 4, `a solar term ${late} days late`);
    return value | BigInt(late) << BigInt(2 * index);
}, 0n));

// Bits 0–15: days from January 1, 2001; 16–19: the name; 20: a work day; 21: the day that the name stands for.
const dayOffs = [];
for (let year = 2001; year <= lastYear; ++year) {
    for (const holiday of HolidayUtil.getHolidays(year))
        dayOffs.push([holiday.getDay(), holiday.getName(), holiday.isWork(), holiday.getTarget() === holiday.getDay()]);
}
for (const { day, name } of missing) {
    if (!dayOffs.some(known => known[0] === day))
        dayOffs.push([day, name, true, false]);
}
const dayOffValues = dayOffs.map(([day, name, isWork, isItself]) => {
    const [year, month, date] = day.split("-").map(Number);
    check(holidays.includes(name), `an unknown holiday: ${name}`);
    return dayNumber(year, month, date) - dayNumber(2001, 1, 1) | holidays.indexOf(name) << 16 | isWork << 20 | isItself << 21;
});
dayOffValues.sort((left, right) => (left & 0xffff) - (right & 0xffff));

const list = (type, name, values) =>
    `inline constexpr ${type} ${name}[] = {\n${values.map(value => `    ${value},\n`).join("")}};\n\n`;
fs.writeFileSync(output, "#pragma once\n\n#include <cstdint>\n\nnamespace tessaly::chinese {\n\n" +
    `inline constexpr int firstLunarYear = ${firstLunarYear};\ninline constexpr int firstYear = ${firstYear};\n` +
    `inline constexpr int lastYear = ${lastYear};\n` +
    list("std::uint32_t", "lunarYears", lunarYears) + list("std::uint8_t", "firstTermDays", firstTermDays) +
    list("std::uint64_t", "termYears", termYears.map(value => `${value}u`)) +
    list("std::uint32_t", "dayOffs", dayOffValues) + "} // namespace tessaly::chinese\n");
