-- The first heading is the title of the page; links from page to page lead to the HTML ones. Other documents of the
-- project ("../../batch.md") are installed as Markdown in docs/ beside html/.

function Link(link)
  if link.target:match('^%.%./%.%./') then
    link.target = link.target:gsub('^%.%./%.%./', '../../docs/')
  elseif not link.target:match('^%a+:') then
    link.target = link.target:gsub('%.md$', '.html')
  end
  return link
end

function Pandoc(document)
  for _, block in ipairs(document.blocks) do
    if block.t == 'Header' then
      document.meta.pagetitle = pandoc.utils.stringify(block.content)
      break
    end
  end
  return document
end
