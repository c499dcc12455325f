#include "app/SampleData.h"

#include <iterator>

namespace tessaly {

namespace {

struct Pair
{
    const char16_t *chinese;
    const char16_t *english;
};

struct Block
{
    /// Days after today.
    int day;
    int startMinute;
    int minutes;
    /// A palette name or "#RRGGBB".
    const char16_t *color;
    Pair title;
};

constexpr int at(int hour, int minute = 0)
{
    return 60 * hour + minute;
}

// Names of the palette, and colours as a user may have picked them.
constexpr const char16_t *blue = u"blue";
constexpr const char16_t *purple = u"purple";
constexpr const char16_t *green = u"green";
constexpr const char16_t *orange = u"orange";
constexpr const char16_t *pink = u"pink";
// lint-allow(colour): a stored value, not a colour of the interface
constexpr const char16_t *teal = u"#12828F";
// lint-allow(colour): a stored value, not a colour of the interface
constexpr const char16_t *red = u"#CC3F3B";
// lint-allow(colour): a stored value, not a colour of the interface
constexpr const char16_t *indigo = u"#4C56C8";

constexpr Block blocks[] = {
    {-3, at(9), 60, teal, {u"晨读", u"Morning reading"}},
    {-3, at(15), 90, purple, {u"读书会", u"Reading group"}},
    {-2, at(9), 100, blue, {u"微观经济学 第1讲", u"Microeconomics lecture 1"}},
    {-2, at(10), 90, teal, {u"统计实验", u"Statistics lab"}},
    {-2, at(12), 60, orange, {u"午间研讨", u"Lunch seminar"}},
    {-2, at(14, 30), 90, indigo, {u"项目周会", u"Project meeting"}},
    {-2, at(18), 60, green, {u"游泳", u"Swimming"}},
    {-1, at(8), 100, indigo, {u"线性代数", u"Linear algebra"}},
    {-1, at(10), 30, orange, {u"站会", u"Stand-up"}},
    {-1, at(13, 30), 180, green, {u"图书馆自习", u"Library hours"}},
    {-1, at(15), 45, pink, {u"导师面谈", u"Adviser meeting"}},
    {0, at(9), 100, blue, {u"微观经济学 第2讲", u"Microeconomics lecture 2"}},
    {0, at(9, 30), 60, purple, {u"设计评审", u"Design review"}},
    {0, at(10), 60, teal, {u"数据工作坊", u"Data workshop"}},
    {0, at(12), 60, orange, {u"团队午餐", u"Team lunch"}},
    {0, at(14), 120, blue, {u"写作时间", u"Writing block"}},
    {0, at(15), 45, pink, {u"出版社电话", u"Publisher call"}},
    {1, at(8), 100, indigo, {u"线性代数", u"Linear algebra"}},
    {1, at(13), 120, purple, {u"博弈论研讨", u"Game theory seminar"}},
    {1, at(16, 30), 45, red, {u"牙科复诊", u"Dentist"}},
    {2, at(10), 90, teal, {u"统计实验", u"Statistics lab"}},
    {2, at(16), 60, orange, {u"整理周报", u"Weekly report"}},
    {2, at(18, 30), 90, green, {u"羽毛球", u"Badminton"}},
    {3, at(9, 30), 90, pink, {u"周末市集", u"Weekend market"}},
    {4, at(17, 30), 120, red, {u"家庭晚餐", u"Family dinner"}},
    {9, at(11), 90, purple, {u"客座讲座", u"Guest lecture"}},
    {14, at(19), 120, orange, {u"音乐会", u"Concert"}},
};

constexpr int writingBlock = 15;
constexpr int secondLecture = 11;

class Sample
{
public:
    Sample(AppLanguage language, const UserCalendar &calendar, Instant now)
        : m_isEnglish(language == AppLanguage::English), m_calendar(calendar), m_today(calendar.day(now))
    {
    }

    [[nodiscard]] SavedData data() const
    {
        return {.schedules = schedules(), .reminders = reminders(), .goals = goals()};
    }

private:
    [[nodiscard]] QString text(Pair pair) const
    {
        return QString::fromUtf16(m_isEnglish ? pair.english : pair.chinese);
    }

    [[nodiscard]] Instant instant(int day, int minute) const
    {
        return m_calendar.instant(m_today.addDays(day), QTime::fromMSecsSinceStartOfDay(minute * 60'000));
    }

    [[nodiscard]] QList<ScheduleItem> schedules() const
    {
        QList<ScheduleItem> list;
        for (const Block &block : blocks) {
            ScheduleItem item{.title = text(block.title),
                              .date = instant(block.day, block.startMinute),
                              .endDate = instant(block.day, block.startMinute + block.minutes)};
            const QString color = QString::fromUtf16(block.color);
            (color.startsWith(u'#') ? item.customColorHex : item.colorName) = color;
            list.append(item);
        }
        ScheduleItem &lecture = list[secondLecture];
        lecture.tag = text({u"课程", u"Course"});
        lecture.notes = text({u"带上第二章的习题。", u"Bring the exercises of chapter 2."});
        lecture.tasks = QList<ScheduleTask>{
            {.title = text({u"通读讲义", u"Read the handout"}), .isComplete = true},
            {.title = text({u"准备两道讨论题", u"Prepare two questions"})},
        };
        list[writingBlock].tag = text({u"教材", u"Textbook"});
        return list;
    }

    [[nodiscard]] QList<ReminderItem> reminders() const
    {
        return {
            {.title = text({u"整理书架", u"Tidy the bookshelf"})},
            {.title = text({u"更新个人主页", u"Update the home page"}),
             .requirement = text({u"补充近两年的论文与课程链接", u"Add the papers and courses of the last two years"})},
            {.title = text({u"提交周报", u"Submit weekly report"}),
             .dueDate = instant(2, at(17)),
             .requirement = text({u"附上本周实验数据与下周计划", u"Attach this week's figures and next week's plan"})},
            {.title = text({u"归还图书", u"Return library books"}), .dueDate = instant(3, at(12))},
            {.title = text({u"预订火车票", u"Book train tickets"}), .dueDate = instant(6, at(9))},
            {.title = text({u"交水电费", u"Pay the utility bill"}), .dueDate = instant(8, at(18))},
            {.title = text({u"给植物浇水", u"Water the plants"}), .dueDate = instant(9, at(8))},
            {.title = text({u"预约体检", u"Book a health check"}),
             .isComplete = true,
             .completedAt = instant(-4, at(15))},
            {.title = text({u"订会议室", u"Reserve a meeting room"}),
             .dueDate = instant(-5, at(10)),
             .isComplete = true,
             .completedAt = instant(-6, at(11))},
            {.title = text({u"寄出合同", u"Send the contract"}),
             .isComplete = true,
             .completedAt = instant(-30, at(9))},
        };
    }

    [[nodiscard]] QList<Goal> goals() const
    {
        const Goal textbook{
            .title = text({u"编写微观经济学教材", u"Write a microeconomics textbook"}),
            .category = text({u"写作", u"Writing"}),
            .targetDate = instant(113, 0),
            .subgoals = QList<Subgoal>{
                {.title = text({u"完成前三章初稿", u"Draft the first three chapters"}),
                 .tasks = QList<GoalTask>{{.title = text({u"第1章 供给与需求", u"Chapter 1: supply and demand"}),
                                           .weight = 3,
                                           .isComplete = true},
                                          {.title = text({u"第2章 弹性", u"Chapter 2: elasticity"}), .weight = 2.5},
                                          {.title = text({u"第3章 消费者选择", u"Chapter 3: consumer choice"}),
                                           .weight = 2.5}}},
                {.title = text({u"绘制全部插图", u"Draw all figures"}),
                 .tasks = QList<GoalTask>{
                     {.title = text({u"统一坐标轴样式", u"Agree on one axis style"}), .isComplete = true},
                     {.title = text({u"导出矢量文件", u"Export vector files"}), .weight = 1.5}}}}};
        const Goal marathon{
            .title = text({u"完成一次半程马拉松", u"Run a half marathon"}),
            .targetDate = instant(67, 0),
            .colorName = QStringLiteral("green"),
            .subgoals = QList<Subgoal>{
                {.title = text({u"每周跑量达到 30 公里", u"Reach 30 km a week"}),
                 .tasks = QList<GoalTask>{
                     {.title = text({u"第1–4周 每周18公里", u"Weeks 1–4: 18 km each"}),
                      .weight = 2,
                      .isComplete = true},
                     {.title = text({u"第5–8周 每周25公里", u"Weeks 5–8: 25 km each"}), .weight = 2.5},
                     {.title = text({u"第9–12周 每周30公里", u"Weeks 9–12: 30 km each"}), .weight = 2.5}}}}};
        const Goal watercolour{.title = text({u"学习水彩基础", u"Learn watercolour basics"}), .progress = 0.75};
        return {textbook, marathon, watercolour};
    }

    bool m_isEnglish;
    const UserCalendar &m_calendar;
    QDate m_today;
};

} // namespace

SavedData sampleData(AppLanguage language, const UserCalendar &calendar, Instant now)
{
    return Sample(language, calendar, now).data();
}

QList<EventCalendar> sampleCalendars(AppLanguage language)
{
    const auto text = [language](Pair pair) {
        return QString::fromUtf16(language == AppLanguage::English ? pair.english : pair.chinese);
    };
    const QString cloud = QStringLiteral("iCloud");
    const QString university = text({u"大学", u"University"});
    return {
        {.identifier = QStringLiteral("courses"),
         .title = text({u"课程", u"Courses"}),
         .sourceTitle = cloud,
         .color = RgbColor{0.17, 0.40, 0.85}},
        {.identifier = QStringLiteral("family"),
         .title = text({u"家庭", u"Family"}),
         .sourceTitle = cloud,
         .color = RgbColor{0.80, 0.25, 0.23}},
        {.identifier = QStringLiteral("seminars"),
         .title = text({u"研讨会", u"Seminars"}),
         .sourceTitle = university,
         .color = RgbColor{0.50, 0.31, 0.80}},
        {.identifier = QStringLiteral("holidays"),
         .title = text({u"节假日", u"Holidays"}),
         .sourceTitle = university,
         .color = RgbColor{0.14, 0.53, 0.30},
         .isWritable = false},
    };
}

} // namespace tessaly
